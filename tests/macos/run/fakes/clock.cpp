#include "tests/macos/run/fakes/clock.h"

#include <algorithm>

namespace fakes {

Time Clock::now() const {
    std::scoped_lock const lock(mutex_);
    return now_;
}

void Clock::threadBegins() {
    std::scoped_lock const lock(mutex_);
    ++working_;
}

void Clock::threadEnds() {
    std::scoped_lock const lock(mutex_);
    --working_;
    changed_.notify_all();
}

bool Clock::wait(std::function<bool()> const& isDone, std::optional<Time> deadline) {
    std::unique_lock lock(mutex_);
    auto const place = waiting_.insert(waiting_.end(), {&isDone, deadline});
    --working_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return isOver(*place); });
    ++working_;
    waiting_.erase(place);
    return isDone();
}

void Clock::change(std::function<void()> const& change) {
    std::scoped_lock const lock(mutex_);
    change();
    changed_.notify_all();
}

void Clock::settle() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return isQuiet(); });
}

std::optional<Time> Clock::firstDeadline() const {
    std::scoped_lock const lock(mutex_);
    std::optional<Time> first;
    for (auto const& waiting : waiting_) {
        if (waiting.deadline && (!first || *waiting.deadline < *first)) first = waiting.deadline;
    }
    return first;
}

void Clock::advanceTo(Time time) {
    std::scoped_lock const lock(mutex_);
    now_ = std::max(now_, time);
    changed_.notify_all();
}

bool Clock::isOver(Waiting const& waiting) const {
    return (*waiting.isDone)() || (waiting.deadline && now_ >= *waiting.deadline);
}

// A thread whose wait is over works again, though it may not have noticed yet.
bool Clock::isQuiet() const {
    return working_ == 0 &&
           std::ranges::none_of(waiting_, [this](auto const& waiting) { return isOver(waiting); });
}

} // namespace fakes
