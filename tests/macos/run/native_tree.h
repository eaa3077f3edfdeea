#pragma once

#include "platform/ui/view.h"
#include "platform/ui/window.h"

#import <AppKit/AppKit.h>

#include <string_view>

namespace trovel {

/// The native mirror of a window; its absence is fatal.
[[nodiscard]] NSWindow* _Nonnull nativeWindow(Window const& window);

/// The native mirror of a view of a window that is mirrored; its absence is fatal.
[[nodiscard]] NSView* _Nonnull nativeView(View const& view);

/// The middle of a view as a global screen point.
[[nodiscard]] NSPoint onScreen(View const& view);

} // namespace trovel
