#pragma once

#include "platform/worker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace trovel {

/// One thread, started by the first task. Destroying the worker waits for the task that runs and
/// drops those that have not begun, on the destroying thread.
class WorkerLinux final : public Worker {
public:
    WorkerLinux() = default;
    ~WorkerLinux();

    void run(Task task) override;

    /// Ends the thread as the destructor does; later tasks are dropped.
    void stop();

private:
    void work();

    std::mutex mutex_;
    std::condition_variable wakeUp_;
    std::deque<Task> tasks_;
    bool isStopped_ = false;
    std::thread thread_;
};

} // namespace trovel
