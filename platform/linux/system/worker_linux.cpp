#include "platform/linux/system/worker_linux.h"

#include <utility>

namespace trovel {

WorkerLinux::~WorkerLinux() {
    stop();
}

void WorkerLinux::run(Task task) {
    std::scoped_lock const lock(mutex_);
    if (isStopped_) return;
    tasks_.push_back(std::move(task));
    if (thread_.joinable()) {
        wakeUp_.notify_one();
    } else {
        thread_ = std::thread([this] { work(); });
    }
}

void WorkerLinux::stop() {
    {
        std::deque<Task>
            dropped; // go when the lock is gone: what they hold may hand in another one
        std::scoped_lock const lock(mutex_);
        isStopped_ = true;
        dropped.swap(tasks_);
    }
    wakeUp_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void WorkerLinux::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        wakeUp_.wait(lock, [this] { return isStopped_ || !tasks_.empty(); });
        if (isStopped_) return;
        // The task goes before the lock is taken again, for the same reason.
        {
            auto const task = std::exchange(tasks_.front(), nullptr);
            tasks_.pop_front();
            lock.unlock();
            task();
        }
        lock.lock();
    }
}

} // namespace trovel
