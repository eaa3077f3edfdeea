#pragma once

#include "platform/main_queue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace trovel {

/// The main queue in virtual time: the clock stands still until somebody moves it, and moving it
/// runs what becomes due on the way, one thing after the other. A block may itself move the clock,
/// as a modal alert does.
class SimulatedMainQueue final : public MainQueue {
public:
    SimulatedMainQueue() = default;
    ~SimulatedMainQueue() = default;

    void post(Block block) override;
    void after(Duration delay, Block block) override;
    Registration every(Duration interval, Block block) override;

    /// The time since the desktop came into being.
    [[nodiscard]] Duration now() const { return now_; }

    /// Runs everything that is due within `duration` from now, in order, then stands at its end.
    void advance(Duration duration);

    /// Runs everything that is due now, also what that gives to the queue for now.
    void drain() { advance(Duration::zero()); }

    /// Steps until `predicate` holds, which is asked first and after every step, or until `limit`
    /// from now. Answers whether it holds.
    bool advanceUntil(std::function<bool()> const& predicate, Duration limit);

    /// Keeps the main thread busy for so long: time goes by, and what becomes due runs late.
    void holdUp(Duration duration);

    /// Moves to the next thing that is due, if that is not later than `latest`, and runs it. False
    /// when there is none; the clock then stays.
    bool step(Duration latest = Duration::max());

    /// Calls `observer` after every block, also after those that run inside another.
    void observe(std::function<void()> observer) { observer_ = std::move(observer); }

    /// Drops everything that waits.
    void clear();

    /// The blocks and timers that wait.
    [[nodiscard]] std::size_t pending() const;

private:
    struct Timer {
        Duration interval;
        Block block;
    };
    struct Entry {
        Duration due;
        std::uint64_t sequence;
        Block block;
        std::weak_ptr<Timer> timer; // of a repeating entry, which has no block of its own
        bool repeats;
    };

    void run(Entry const& entry);
    static bool isLater(Entry const& left, Entry const& right);
    void push(Duration due, Block block, std::shared_ptr<Timer> const& timer);
    std::optional<Entry> popDue(Duration latest);

    mutable std::mutex mutex_; // post() may come from any thread
    std::vector<Entry> heap_;
    std::uint64_t nextSequence_ = 0;
    Duration now_ = Duration::zero();
    std::function<void()> observer_;
};

} // namespace trovel
