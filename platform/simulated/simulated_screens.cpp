#include "platform/simulated/simulated_screens.h"

#include <algorithm>

namespace trovel {

std::vector<Screen> SimulatedScreens::screens() const {
    std::vector<Screen> screens;
    for (auto const& display : displays_) {
        Screen screen{display.frame, display.scale, std::nullopt};
        if (display.hasScreenNumber) screen.screenNumber = display.displayId;
        screens.push_back(screen);
    }
    return screens;
}

void SimulatedScreens::detach(std::uint32_t displayId) {
    std::erase_if(displays_, [displayId](auto const& each) { return each.displayId == displayId; });
}

SimulatedDisplay const* SimulatedScreens::display(std::uint32_t displayId) const {
    auto const found = std::ranges::find(displays_, displayId, &SimulatedDisplay::displayId);
    return found != displays_.end() ? &*found : nullptr;
}

Point SimulatedScreens::flipped(Point point) const {
    double const height = displays_.empty() ? 0 : displays_.front().frame.height;
    return {point.x, height - point.y};
}

} // namespace trovel
