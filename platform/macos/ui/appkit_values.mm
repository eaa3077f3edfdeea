#include "platform/macos/ui/appkit_values.h"

#include "platform/macos/bridge/convert.h"

namespace trovel {

namespace {

NSColor* _Nonnull baseColor(Color const& color) {
    switch (color.name) {
    case Color::Name::fixed:
        return [NSColor colorWithSRGBRed:color.red green:color.green blue:color.blue alpha:1];
    case Color::Name::controlAccent:
        return NSColor.controlAccentColor;
    case Color::Name::controlBackground:
        return NSColor.controlBackgroundColor;
    case Color::Name::label:
        return NSColor.labelColor;
    case Color::Name::secondaryLabel:
        return NSColor.secondaryLabelColor;
    case Color::Name::tertiaryLabel:
        return NSColor.tertiaryLabelColor;
    case Color::Name::separator:
        return NSColor.separatorColor;
    }
}

EventFlags modifierFlags(NSEvent* _Nonnull event) {
    return static_cast<EventFlags>(event.modifierFlags);
}

} // namespace

NSColor* _Nonnull toNSColor(Color const& color) {
    // The desktop's colours have an alpha of their own, which stays unless another is asked for.
    NSColor* const base = baseColor(color);
    return color.alpha < 1 ? [base colorWithAlphaComponent:color.alpha] : base;
}

NSFontWeight toNSFontWeight(Font::Weight weight) {
    switch (weight) {
    case Font::Weight::light:
        return NSFontWeightLight;
    case Font::Weight::regular:
        return NSFontWeightRegular;
    case Font::Weight::medium:
        return NSFontWeightMedium;
    case Font::Weight::semibold:
        return NSFontWeightSemibold;
    case Font::Weight::bold:
        return NSFontWeightBold;
    }
}

NSFont* _Nonnull toNSFont(Font const& font) {
    auto const weight = toNSFontWeight(font.weight);
    switch (font.family) {
    case Font::Family::system:
        return [NSFont systemFontOfSize:font.size weight:weight];
    case Font::Family::monospacedSystem:
        return [NSFont monospacedSystemFontOfSize:font.size weight:weight];
    }
}

KeyEvent toKeyEvent(NSEvent* _Nonnull event) {
    if (event.type == NSEventTypeFlagsChanged) {
        return {KeyEvent::Kind::flagsChanged, event.keyCode, modifierFlags(event)};
    }
    // Only events of a key that types may be asked for what it types.
    return {KeyEvent::Kind::keyDown, event.keyCode, modifierFlags(event),
            fromNSString([event charactersByApplyingModifiers:0])};
}

MouseEvent toMouseEvent(NSEvent* _Nonnull event, MouseEvent::Kind kind) {
    return {kind, fromNSPoint(event.locationInWindow), modifierFlags(event)};
}

} // namespace trovel
