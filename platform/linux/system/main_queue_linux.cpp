#include "platform/linux/system/main_queue_linux.h"

#include "platform/fatal.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace trovel {

namespace {

// Counts on CLOCK_MONOTONIC, the kernel timer's clock.
using Clock = std::chrono::steady_clock;

MainQueue::Duration timeNow() {
    return std::chrono::duration_cast<MainQueue::Duration>(Clock::now().time_since_epoch());
}

} // namespace

class MainQueueLinux::Schedule {
public:
    using Key = std::pair<Duration, std::uint64_t>; // when it is due, and its place in the order

    Schedule() : timer_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
        if (timer_ < 0) fatal("the main queue has no timer");
    }
    ~Schedule() { close(timer_); }
    Schedule(Schedule const&) = delete;
    Schedule& operator=(Schedule const&) = delete;

    Key add(Duration due, Block block) {
        std::scoped_lock const lock(mutex_);
        Key const key{due, nextSequence_++};
        blocks_.emplace(key, std::move(block));
        if (blocks_.begin()->first == key) setTimer();
        return key;
    }

    void remove(Key key) {
        // The block goes when the lock is gone: what it holds may want to add another one.
        decltype(blocks_)::node_type removed;
        std::scoped_lock const lock(mutex_);
        removed = blocks_.extract(key);
        setTimer();
    }

    /// The first block in the order that comes before `end`; the timer stands for the one after it.
    std::optional<Block> takeBefore(Key end) {
        std::scoped_lock const lock(mutex_);
        std::optional<Block> taken;
        if (!isStopped_ && !blocks_.empty() && blocks_.begin()->first < end) {
            taken = std::move(blocks_.extract(blocks_.begin()).mapped());
        }
        setTimer();
        return taken;
    }

    /// The place in the order of a block that would be added now.
    Key end() {
        std::scoped_lock const lock(mutex_);
        return {timeNow(), nextSequence_};
    }

    void stop() {
        std::scoped_lock const lock(mutex_);
        isStopped_ = true;
        setTimer();
    }

    void clear() {
        decltype(blocks_) dropped; // goes when the lock is gone, as above
        std::scoped_lock const lock(mutex_);
        dropped.swap(blocks_);
        setTimer();
    }

    [[nodiscard]] int timer() const { return timer_; }

private:
    void setTimer() {
        itimerspec when{};
        if (!isStopped_ && !blocks_.empty()) {
            constexpr std::int64_t kNanosecondsInASecond = 1'000'000'000;
            // Zero would switch the timer off, a moment in the past makes it readable at once.
            auto const due = std::max<std::int64_t>(blocks_.begin()->first.first.count(), 1);
            when.it_value.tv_sec = due / kNanosecondsInASecond;
            when.it_value.tv_nsec = due % kNanosecondsInASecond;
        }
        if (timerfd_settime(timer_, TFD_TIMER_ABSTIME, &when, nullptr) != 0) {
            fatal("the main queue cannot set its timer");
        }
    }

    std::mutex mutex_;
    std::map<Key, Block> blocks_;
    std::uint64_t nextSequence_ = 0;
    bool isStopped_ = false;
    int timer_;
};

struct MainQueueLinux::Repetition {
    Duration interval;
    Block block;
    Duration due;
    Schedule::Key key;
    bool hasEnded = false;
};

MainQueueLinux::MainQueueLinux() : schedule_(std::make_shared<Schedule>()) {}
MainQueueLinux::~MainQueueLinux() = default;

void MainQueueLinux::post(Block block) {
    schedule_->add(timeNow(), std::move(block));
}

void MainQueueLinux::after(Duration delay, Block block) {
    schedule_->add(timeNow() + std::max(delay, Duration::zero()), std::move(block));
}

Registration MainQueueLinux::every(Duration interval, Block block) {
    if (interval <= Duration::zero()) fatal("a timer needs an interval");
    auto const repetition = std::make_shared<Repetition>(
        Repetition{.interval = interval, .block = std::move(block), .due = timeNow(), .key = {}});
    scheduleNext(repetition);
    return Registration([weak = std::weak_ptr(schedule_), repetition] {
        repetition->hasEnded = true;
        if (auto const schedule = weak.lock()) schedule->remove(repetition->key);
    });
}

void MainQueueLinux::scheduleNext(std::shared_ptr<Repetition> const& repetition) {
    // After a stall the missed times are left out instead of being made up for in a burst.
    auto const missed = (timeNow() - repetition->due) / repetition->interval;
    repetition->due += repetition->interval * (missed + 1);
    repetition->key = schedule_->add(repetition->due, [this, repetition] {
        repetition->block();
        if (!repetition->hasEnded) scheduleNext(repetition);
    });
}

int MainQueueLinux::fileDescriptor() const {
    return schedule_->timer();
}

void MainQueueLinux::runDue() {
    auto const end = schedule_->end();
    while (auto const block = schedule_->takeBefore(end)) (*block)();
}

void MainQueueLinux::stop() {
    schedule_->stop();
}

void MainQueueLinux::clear() {
    schedule_->clear();
}

} // namespace trovel
