#include "platform/macos/ui/icon_image_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/image_mac.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/drawn_image_mac.h"

#include <variant>

namespace trovel {

namespace {

NSImage* _Nullable nativeImage(SymbolIcon const& icon) {
    NSImage* const symbol =
        [NSImage imageWithSystemSymbolName:toNSString(icon.name)
                  accessibilityDescription:toNSString(icon.accessibilityDescription)];
    if (symbol == nil || !icon.configuration) return symbol;
    NSImage* const configured = [symbol
        imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                         configurationWithPointSize:icon.configuration->pointSize
                                                             weight:toNSFontWeight(
                                                                        icon.configuration
                                                                            ->weight)]];
    return configured != nil ? configured : symbol;
}

NSImage* _Nullable nativeImage(OwnApplicationIcon const&) {
    return [NSImage imageNamed:NSImageNameApplicationIcon];
}

NSImage* _Nullable nativeImage(ApplicationIcon const& icon) {
    return toNSImage(icon.image);
}

NSImage* _Nullable nativeImage(DrawnImage const& image) {
    return toNSImage(image);
}

} // namespace

NSImage* _Nullable toNSImage(Icon const& icon) {
    return std::visit([](auto const& kind) { return nativeImage(kind); }, icon);
}

} // namespace trovel
