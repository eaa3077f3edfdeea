#pragma once

#include "platform/simulated/simulated_main_queue.h"
#include "platform/worker.h"

namespace trovel {

/// The worker as a delayed event: a task runs whole at the moment at which it would have ended, on
/// the only thread there is.
class SimulatedWorker final : public Worker {
public:
    explicit SimulatedWorker(SimulatedMainQueue& queue) : queue_(queue) {}
    ~SimulatedWorker() = default;

    void run(Task task) override;

    /// How long each task takes from now on. A task that takes no time at all is through before
    /// run() returns, as it may be on a thread of its own.
    void setLatency(MainQueue::Duration latency) { latency_ = latency; }

    /// Whether a task is running, that is, whether the code that asks is off the main thread.
    [[nodiscard]] bool isRunningTask() const { return isRunningTask_; }

private:
    void perform(Task const& task);

    SimulatedMainQueue& queue_;
    MainQueue::Duration latency_ = std::chrono::milliseconds(20);
    MainQueue::Duration lastEnd_ = MainQueue::Duration::zero();
    bool isRunningTask_ = false;
};

} // namespace trovel
