#pragma once

#include "platform/ui/view.h"

#import <AppKit/AppKit.h>

/// The mirror of a view: frame, layer, accessibility and tracking of the pointer are its own; what
/// AppKit shows of the view's kind fills it. It hands the mouse to the window's tree, which knows
/// whom an event is for; only buttons take clicks by themselves. It refers to the view weakly.
@interface TrovelView : NSView
- (nonnull instancetype)initWithTrovelView:(trovel::View&)view NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(nonnull NSCoder*)coder NS_UNAVAILABLE;

/// Applies what the view is now, apart from its subviews.
- (void)trovelUpdate;

/// Shows exactly these mirrors in it, from back to front.
- (void)trovelShowMirrors:(nonnull NSArray<TrovelView*>*)mirrors;
@end

namespace trovel {

/// A new mirror of the view's kind, up to date but for its subviews.
[[nodiscard]] TrovelView* _Nonnull makeViewPeer(View& view);

} // namespace trovel
