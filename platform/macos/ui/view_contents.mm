#include "platform/macos/ui/view_contents.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/icon_image_mac.h"
#include "platform/ui/button.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/window.h"

namespace trovel {

namespace {

NSColor* _Nullable tint(std::optional<Color> const& color) {
    return color ? toNSColor(*color) : nil;
}

NSTextAlignment toNative(TextAlignment alignment) {
    switch (alignment) {
    case TextAlignment::natural:
        return NSTextAlignmentNatural;
    case TextAlignment::center:
        return NSTextAlignmentCenter;
    }
}

NSImageScaling toNative(ImageScaling scaling) {
    switch (scaling) {
    case ImageScaling::proportionallyDown:
        return NSImageScaleProportionallyDown;
    case ImageScaling::proportionallyUpOrDown:
        return NSImageScaleProportionallyUpOrDown;
    }
}

NSButton* _Nonnull makeButton(id _Nonnull target, SEL _Nonnull action) {
    NSButton* const button = [[NSButton alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    button.bezelStyle = NSBezelStylePush;
    button.target = target;
    button.action = action;
    return button;
}

NSBox* _Nonnull makeSeparator() {
    NSBox* const box = [[NSBox alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    box.boxType = NSBoxSeparator;
    return box;
}

NSVisualEffectView* _Nonnull makeEffectView() {
    NSVisualEffectView* const effect =
        [[NSVisualEffectView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    effect.material = NSVisualEffectMaterialHUDWindow;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    return effect;
}

void update(NSTextField* _Nonnull field, Label const& label) {
    auto const& look = label.look();
    field.stringValue = toNSString(label.text());
    field.font = toNSFont(look.font);
    field.textColor = toNSColor(look.textColor);
    field.alignment = toNative(look.alignment);
    field.maximumNumberOfLines = look.maximumLines;
    if (look.maximumLines != 1) field.lineBreakMode = NSLineBreakByWordWrapping;
    if (!look.isBezeled) return;
    field.bezeled = YES;
    field.bezelStyle = NSTextFieldRoundedBezel;
    field.drawsBackground = YES;
    field.backgroundColor = toNSColor(Color::system(Color::Name::controlBackground));
}

void update(NSButton* _Nonnull native, Button const& button) {
    auto const& look = button.look();
    // Where the keyboard goes from button to button is AppKit's affair and the user's setting.
    auto const* const window = button.window();
    native.refusesFirstResponder = window != nullptr && window->attributes().takesEveryKey;
    native.title = toNSString(button.title());
    native.enabled = button.isEnabled();
    native.bordered = look.isBordered;
    native.controlSize = look.isLarge ? NSControlSizeLarge : NSControlSizeRegular;
    if (look.font) native.font = toNSFont(*look.font);
    native.contentTintColor = tint(look.contentTint);
    native.keyEquivalent = toNSString(look.keyEquivalent);
    native.keyEquivalentModifierMask = 0;
}

void update(NSImageView* _Nonnull native, ImageView const& imageView) {
    auto const& icon = imageView.icon();
    native.image = icon ? toNSImage(*icon) : nil;
    native.imageScaling = toNative(imageView.scaling());
    native.contentTintColor = tint(imageView.contentTint());
}

} // namespace

NSView* _Nullable makeContents(View const& view, id _Nonnull target, SEL _Nonnull action) {
    switch (view.kind()) {
    case ViewKind::container:
    case ViewKind::canvas:
        return nil;
    case ViewKind::label:
        return [NSTextField labelWithString:@""];
    case ViewKind::button:
        return makeButton(target, action);
    case ViewKind::imageView:
        return [[NSImageView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    case ViewKind::separator:
        return makeSeparator();
    case ViewKind::visualEffect:
        return makeEffectView();
    }
}

bool isShownOnly(View const& view) {
    switch (view.kind()) {
    case ViewKind::label:
    case ViewKind::imageView:
    case ViewKind::separator:
        return true;
    case ViewKind::container:
    case ViewKind::button:
    case ViewKind::visualEffect:
    case ViewKind::canvas:
        return false;
    }
}

void updateContents(NSView* _Nonnull contents, View const& view) {
    switch (view.kind()) {
    case ViewKind::label:
        update(static_cast<NSTextField*>(contents), static_cast<Label const&>(view));
        return;
    case ViewKind::button:
        update(static_cast<NSButton*>(contents), static_cast<Button const&>(view));
        return;
    case ViewKind::imageView:
        update(static_cast<NSImageView*>(contents), static_cast<ImageView const&>(view));
        return;
    case ViewKind::container:
    case ViewKind::canvas:
    case ViewKind::separator:
    case ViewKind::visualEffect:
        return;
    }
}

} // namespace trovel
