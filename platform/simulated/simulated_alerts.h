#pragma once

#include "platform/alerts.h"
#include "platform/simulated/journal.h"
#include "platform/simulated/simulated_application.h"

#include <optional>
#include <vector>

namespace trovel {

/// Alerts that block their caller in virtual time: the queue goes on until the user closes them.
class SimulatedAlerts final : public Alerts {
public:
    SimulatedAlerts(SimulatedMainQueue& queue, Journal& journal, SimulatedApplication& application)
        : queue_(queue), journal_(journal), application_(application) {}
    ~SimulatedAlerts() = default;

    void runModal(Alert const& alert) override;

    /// How long the user takes to close each alert that comes up from now on; nothing means that
    /// somebody closes it by hand, from something that was scheduled on the queue.
    void setReadingTime(std::optional<MainQueue::Duration> time) { readingTime_ = time; }

    /// The user presses the button of the alert that came up last. Nothing when none is up.
    void close();

    /// The alerts that are up, the oldest first.
    [[nodiscard]] std::vector<Alert> const& shown() const { return shown_; }

private:
    SimulatedMainQueue& queue_;
    Journal& journal_;
    SimulatedApplication& application_;
    std::optional<MainQueue::Duration> readingTime_ = std::chrono::seconds(1);
    std::vector<Alert> shown_;
    std::vector<bool> isClosed_; // beside shown_
};

} // namespace trovel
