#include "platform/simulated/simulated_alerts.h"

#include "platform/fatal.h"

namespace trovel {

void SimulatedAlerts::close() {
    if (!shown_.empty()) isClosed_.back() = true;
}

void SimulatedAlerts::runModal(Alert const& alert) {
    journal_.record(effect::AlertShown{alert});
    auto const index = shown_.size();
    shown_.push_back(alert);
    isClosed_.push_back(false);
    auto const closed = std::make_shared<bool>(false);
    if (readingTime_) queue_.after(*readingTime_, [closed] { *closed = true; });
    auto const hadBeenRunning = application_.isRunning();
    while (!isClosed_[index] && !*closed) {
        if (hadBeenRunning && !application_.isRunning()) break;
        if (!queue_.step()) fatal("an alert is up that nobody is going to close");
    }
    shown_.resize(index);
    isClosed_.resize(index);
    journal_.record(effect::AlertClosed{});
}

} // namespace trovel
