#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/ui/events.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// A fixed colour, or the desktop's own, which follows light and dark appearance when it is used.
[[nodiscard]] NSColor* _Nonnull toNSColor(Color const& color);

[[nodiscard]] NSFontWeight toNSFontWeight(Font::Weight weight);

[[nodiscard]] NSFont* _Nonnull toNSFont(Font const& font);

/// A key-down or flags-changed event as a value.
[[nodiscard]] KeyEvent toKeyEvent(NSEvent* _Nonnull event);

/// A mouse event as a value of that kind.
[[nodiscard]] MouseEvent toMouseEvent(NSEvent* _Nonnull event, MouseEvent::Kind kind);

} // namespace trovel
