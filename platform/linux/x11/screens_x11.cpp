#include "platform/linux/x11/screens_x11.h"

#include "platform/linux/x11/monitors.h"
#include "platform/linux/x11/root_pixels.h"

namespace trovel {

std::vector<Screen> ScreensX11::screens() const {
    auto const monitors = listMonitors(x_);
    std::vector<Screen> screens;
    for (auto const& monitor : monitors) {
        screens.push_back({frameOf(monitor, monitors.front()), monitor.scale, monitor.id});
    }
    return screens;
}

} // namespace trovel
