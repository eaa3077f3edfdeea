#pragma once

#include "platform/macos/ui/view_peer.h"

/// The mirror of a view that draws itself.
@interface TrovelCanvasView : TrovelView
- (nonnull instancetype)initWithTrovelCanvasView:(trovel::CanvasView&)view
    NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithTrovelView:(trovel::View&)view NS_UNAVAILABLE;
@end
