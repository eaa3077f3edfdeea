#include "platform/simulated/simulated_worker.h"

#include <algorithm>
#include <utility>

namespace trovel {

void SimulatedWorker::run(Task task) {
    // One task after the other: a task that was given while another runs begins when that has
    // ended.
    lastEnd_ = std::max(lastEnd_, queue_.now()) + latency_;
    if (lastEnd_ == queue_.now()) {
        perform(task);
    } else {
        queue_.after(lastEnd_ - queue_.now(), [this, task = std::move(task)] { perform(task); });
    }
}

void SimulatedWorker::perform(Task const& task) {
    bool const wasRunningTask = std::exchange(isRunningTask_, true);
    task();
    isRunningTask_ = wasRunningTask;
}

} // namespace trovel
