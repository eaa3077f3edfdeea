#pragma once

#include "platform/ui/event_monitors.h"

namespace trovel {

/// AppKit's local event monitors, which see events while Trovel is the active application.
class EventMonitorsMac final : public EventMonitors {
public:
    EventMonitorsMac() = default;

    Registration addLocalKeyDownMonitor(KeyDownHandler handler) override;
};

} // namespace trovel
