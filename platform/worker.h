#pragma once

#include <functional>

namespace trovel {

/// The one place off the main thread. Tasks run one after the other in the order given and may
/// block; what they need is copied into them, and they hand results back through MainQueue::post.
class Worker {
public:
    using Task = std::function<void()>;

    Worker(Worker const&) = delete;
    Worker& operator=(Worker const&) = delete;

    /// Runs `task` off the main thread. Any thread.
    virtual void run(Task task) = 0;

protected:
    Worker() = default;
    ~Worker() = default;
};

} // namespace trovel
