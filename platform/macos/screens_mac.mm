#include "platform/macos/screens_mac.h"

#include "platform/macos/bridge/convert.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace trovel {

namespace {

std::optional<std::uint32_t> screenNumber(NSScreen* _Nonnull screen) {
    id const value = screen.deviceDescription[@"NSScreenNumber"];
    if (![value isKindOfClass:NSNumber.class]) return std::nullopt;
    auto const number = static_cast<NSNumber*>(value).longLongValue;
    if (!std::in_range<std::uint32_t>(number)) return std::nullopt;
    return static_cast<std::uint32_t>(number);
}

} // namespace

std::vector<Screen> ScreensMac::screens() const {
    std::vector<Screen> screens;
    for (NSScreen* screen in NSScreen.screens) {
        screens.push_back(
            {fromNSRect(screen.frame), screen.backingScaleFactor, screenNumber(screen)});
    }
    return screens;
}

} // namespace trovel
