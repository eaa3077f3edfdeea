#pragma once

#include "platform/ui/view.h"

#import <AppKit/AppKit.h>

/// The mirror of a container. It shows nothing of its own, and hands the mouse to the window's
/// tree, which knows whom an event is for.
@interface TrovelView : NSView
- (nonnull instancetype)initWithView:(trovel::View const&)view NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(nonnull NSCoder*)coder NS_UNAVAILABLE;
@end

/// The mirror of a view that draws itself.
@interface TrovelCanvasView : TrovelView
- (nonnull instancetype)initWithCanvasView:(trovel::CanvasView const&)view
    NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithView:(trovel::View const&)view NS_UNAVAILABLE;
@end

namespace trovel {

/// A new mirror of the view's kind; frame and subviews are the caller's to apply. It refers to the
/// view weakly.
[[nodiscard]] TrovelView* _Nonnull makeViewPeer(View const& view);

} // namespace trovel
