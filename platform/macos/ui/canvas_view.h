#pragma once

#include "platform/macos/ui/view_peer.h"

/// The mirror of a view that draws itself.
@interface TrovelCanvasView : TrovelView
- (nonnull instancetype)initWithCanvasView:(trovel::CanvasView&)view NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithView:(trovel::View&)view NS_UNAVAILABLE;
@end
