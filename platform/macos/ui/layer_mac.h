#pragma once

#include "platform/ui/layer_style.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// Gives `view` a layer of that look. The desktop's own colours are resolved in the view's present
/// appearance, so it is done again when that changes.
void applyLayerStyle(LayerStyle const& style, NSView* _Nonnull view);

} // namespace trovel
