#include "platform/simulated/simulated_event_monitors.h"

#include <memory>
#include <utility>

namespace trovel {

Registration SimulatedEventMonitors::addLocalKeyDownMonitor(KeyDownHandler handler) {
    journal_.record(effect::MonitorAdded{});
    auto inner =
        std::make_shared<Registration>(monitors_.addLocalKeyDownMonitor(std::move(handler)));
    return Registration([this, inner] {
        inner->reset();
        journal_.record(effect::MonitorRemoved{});
    });
}

} // namespace trovel
