#include "platform/macos/ui/layer_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"

#import <QuartzCore/QuartzCore.h>

namespace trovel {

namespace {

// A CGColor lives no longer than the NSColor that it comes from, until a layer has retained it.
void applyColors(LayerStyle const& style, CALayer* _Nullable layer) {
    NSColor* const border __attribute__((objc_precise_lifetime)) = toNSColor(style.borderColor);
    layer.borderColor = border.CGColor;
    NSColor* const background __attribute__((objc_precise_lifetime)) =
        toNSColor(style.backgroundColor);
    layer.backgroundColor = background.CGColor;
    if (!style.shadow) return;
    NSColor* const shadow __attribute__((objc_precise_lifetime)) = toNSColor(style.shadow->color);
    layer.shadowColor = shadow.CGColor;
}

} // namespace

void applyLayerStyle(LayerStyle const& style, NSView* _Nonnull view) {
    view.wantsLayer = YES;
    view.alphaValue = style.opacity;
    // Before the layer's own values, which it resets.
    bool const hasShadow = view.shadow != nil;
    if (hasShadow != style.shadow.has_value()) {
        view.shadow = style.shadow ? [[NSShadow alloc] init] : nil;
    }
    CALayer* const layer = view.layer;
    layer.cornerRadius = style.cornerRadius;
    layer.masksToBounds = style.masksToBounds;
    layer.borderWidth = style.borderWidth;
    if (style.shadow) {
        layer.shadowOffset = toNSSize(style.shadow->offset);
        layer.shadowRadius = style.shadow->radius;
        layer.shadowOpacity = static_cast<float>(style.shadow->opacity);
    }
    auto const* const colored = &style; // the block is run before this call returns
    [view.effectiveAppearance performAsCurrentDrawingAppearance:^{
      applyColors(*colored, layer);
    }];
}

} // namespace trovel
