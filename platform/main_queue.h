#pragma once

#include "platform/registration.h"

#include <chrono>
#include <functional>

namespace trovel {

/// The main thread's schedule. Blocks run one at a time on the main thread, ordered by the time
/// they are due and then by the order in which they were given. They go on running while a modal
/// alert or panel is up, so nothing that is waiting is held back by one.
class MainQueue {
public:
    using Block = std::function<void()>;
    using Duration = std::chrono::nanoseconds;

    MainQueue(MainQueue const&) = delete;
    MainQueue& operator=(MainQueue const&) = delete;

    /// Runs `block` in a later turn of the main loop, never before this call returns. Any thread.
    virtual void post(Block block) = 0;

    /// Runs `block` once, `delay` from now. Main thread only.
    virtual void after(Duration delay, Block block) = 0;

    /// Runs `block` every `interval`, first one interval from now, until the registration ends.
    /// Main thread only.
    virtual Registration every(Duration interval, Block block) = 0;

protected:
    MainQueue() = default;
    ~MainQueue() = default; // The backend owns it; nobody deletes through the interface.
};

} // namespace trovel
