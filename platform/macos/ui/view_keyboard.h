#pragma once

#include "platform/ui/view.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace trovel {

/// Whether the keyboard may come to that view by itself: it is what a screen reader takes for a
/// control, and the user has switched keyboard navigation on. AppKit's own controls know that
/// without being asked.
[[nodiscard]] bool takesKeyboard(std::weak_ptr<View> const& mirrored);

/// Presses the view, which has the keyboard, if that is what the key does; whether it was. The
/// press may take the view out of the tree.
bool pressByKey(NSEvent* _Nonnull event, std::weak_ptr<View> const& mirrored);

/// Whether the key goes from control to control, or presses one, in the window of that view.
[[nodiscard]] bool isNavigation(NSEvent* _Nonnull event, std::weak_ptr<View> const& mirrored);

/// The shape that a ring around the view follows.
[[nodiscard]] NSBezierPath* _Nonnull outline(std::weak_ptr<View> const& mirrored);

} // namespace trovel
