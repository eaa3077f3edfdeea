#include "platform/simulated/simulated_worker.h"

#include <algorithm>
#include <utility>

namespace trovel {

void SimulatedWorker::run(Task task) {
    // One task after the other: a task that was given while another runs begins when that has
    // ended.
    lastEnd_ = std::max(lastEnd_, queue_.now()) + latency_;
    queue_.after(lastEnd_ - queue_.now(), [this, task = std::move(task)] {
        isRunningTask_ = true;
        task();
        isRunningTask_ = false;
    });
}

} // namespace trovel
