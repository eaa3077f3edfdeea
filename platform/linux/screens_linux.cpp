#include "platform/linux/screens_linux.h"

#include "platform/linux/convert.h"
#include "platform/linux/xcb/monitors.h"

namespace trovel {

std::vector<Screen> ScreensLinux::screens() const {
    auto const monitors = listMonitors(x_);
    std::vector<Screen> screens;
    for (auto const& monitor : monitors) {
        screens.push_back({frameOf(monitor, monitors.front()), monitor.scale, monitor.id});
    }
    return screens;
}

} // namespace trovel
