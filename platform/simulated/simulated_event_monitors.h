#pragma once

#include "platform/simulated/journal.h"
#include "platform/ui/local_event_monitors.h"

namespace trovel {

/// The program's event monitors, whose coming and going the journal notes.
class SimulatedEventMonitors final : public EventMonitors {
public:
    explicit SimulatedEventMonitors(Journal& journal) : journal_(journal) {}
    ~SimulatedEventMonitors() = default;

    Registration addLocalKeyDownMonitor(KeyDownHandler handler) override;

    [[nodiscard]] bool swallows(KeyEvent const& event) const { return monitors_.swallows(event); }
    [[nodiscard]] std::size_t count() const { return monitors_.count(); }

private:
    Journal& journal_;
    LocalEventMonitors monitors_;
};

} // namespace trovel
