#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <optional>

namespace fakes {

using Time = std::chrono::nanoseconds;

/// Virtual time, and the real threads that live in it: time stands still while one of them works.
/// Any thread may call it.
class Clock {
public:
    Clock() = default;
    Clock(Clock const&) = delete;
    Clock& operator=(Clock const&) = delete;

    [[nodiscard]] Time now() const;

    /// A thread other than the main one begins to work, and ends. The first is said by whoever
    /// starts the thread, before it does.
    void threadBegins();
    void threadEnds();

    /// Lets a working thread wait until `isDone`, which is called while the clock is locked; false
    /// when the deadline came first.
    bool wait(std::function<bool()> const& isDone, std::optional<Time> deadline);

    /// Changes what `wait` waits for.
    void change(std::function<void()> const& change);

    /// Waits until no thread works any more.
    void settle();

    /// When the first of the waiting threads gives up.
    [[nodiscard]] std::optional<Time> firstDeadline() const;

    /// Only while no thread works.
    void advanceTo(Time time);

private:
    struct Waiting {
        std::function<bool()> const* isDone;
        std::optional<Time> deadline;
    };

    [[nodiscard]] bool isOver(Waiting const& waiting) const;
    [[nodiscard]] bool isQuiet() const;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::list<Waiting> waiting_;
    Time now_{};
    int working_ = 0;
};

} // namespace fakes
