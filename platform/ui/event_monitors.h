#pragma once

#include "platform/registration.h"
#include "platform/ui/events.h"

#include <cstdint>
#include <functional>

namespace trovel {

enum class MonitorVerdict : std::uint8_t { passOn, swallow };

/// Monitors of the program's own events, asked before a window sees them. Main thread only.
class EventMonitors {
public:
    using KeyDownHandler = std::function<MonitorVerdict(KeyEvent const&)>;

    EventMonitors(EventMonitors const&) = delete;
    EventMonitors& operator=(EventMonitors const&) = delete;

    /// Shows `handler` every key-down event of the program until the registration ends. It may end
    /// its own registration.
    virtual Registration addLocalKeyDownMonitor(KeyDownHandler handler) = 0;

protected:
    EventMonitors() = default;
    ~EventMonitors() = default;
};

} // namespace trovel
