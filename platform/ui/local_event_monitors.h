#pragma once

#include "platform/ui/event_monitors.h"

#include <cstdint>
#include <map>
#include <memory>

namespace trovel {

/// Event monitors for a backend whose system has none: it asks `swallows` before it sends a
/// key-down event to a window. Registrations may outlive it.
class LocalEventMonitors final : public EventMonitors {
public:
    LocalEventMonitors();
    ~LocalEventMonitors();

    Registration addLocalKeyDownMonitor(KeyDownHandler handler) override;

    /// Shows the event to the monitors, the newest first, until one swallows it.
    [[nodiscard]] bool swallows(KeyEvent const& event) const;

    [[nodiscard]] std::size_t count() const { return handlers_->size(); }

private:
    using Handlers = std::map<std::uint64_t, KeyDownHandler>;

    std::shared_ptr<Handlers> handlers_; // shared with the registrations, which hold it weakly
    std::uint64_t nextKey_ = 0;
};

} // namespace trovel
