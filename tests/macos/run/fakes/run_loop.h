#pragma once

#include "tests/macos/run/fakes/clock.h"
#include "tests/macos/run/fakes/foundation.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <vector>

namespace fakes {

/// Run-loop modes as a set. The common modes are those that AppKit puts into it: the default, the
/// modal panel's and the event tracking's (NSRunLoop.Mode.common, "Threading Programming Guide").
using Modes = unsigned int;
inline constexpr Modes kDefaultMode = 1;
inline constexpr Modes kModalMode = 2;
inline constexpr Modes kTrackingMode = 4;
inline constexpr Modes kCommonModes = kDefaultMode | kModalMode | kTrackingMode;

[[nodiscard]] Modes modesOf(NSString* _Nonnull name);

/// The main thread's run loop, on virtual time: it passes at once to the next moment at which
/// something happens. Main thread only, but
/// for what says otherwise.
class RunLoop {
public:
    using Block = void (^)(void);
    using Predicate = std::function<bool()>;

    explicit RunLoop(Clock& clock) : clock_(clock) {}
    RunLoop(RunLoop const&) = delete;
    RunLoop& operator=(RunLoop const&) = delete;

    /// Runs the block once, in the next turn in one of those modes. Any thread.
    void perform(Modes modes, Block _Nonnull block);
    /// Makes a loop that sleeps take a turn. Any thread.
    void wakeUp() { isAwake_ = true; }
    void addTimer(NSTimer* _Nonnull timer, Modes modes);
    void removeTimer(NSTimer* _Nonnull timer);
    /// Hands the application an event in a later turn, whatever the mode.
    void postEvent(std::function<void()> dispatch);
    /// Something happens on the Mac, which no mode of this process's holds up. Any thread.
    void later(Time delay, std::function<void()> happening);

    /// Turns in that mode until the predicate holds, or the time is up. Waiting for what can never
    /// happen ends the process.
    bool run(Modes mode, Predicate const& isOver, std::optional<Time> limit);

    /// Drops everything that still waits.
    void clear();

    /// Turns until nothing more is to be done at this moment.
    void drain();

private:
    struct Performed {
        Modes modes;
        Block block;
    };
    struct Scheduled {
        NSTimer* timer;
        Modes modes;
        bool isFiring;
    };
    struct Happening {
        Time due;
        std::function<void()> happen;
    };

    bool turn(Modes mode);
    bool happen();
    bool runBlocks(Modes mode);
    bool dispatchEvent();
    bool fireTimer(Modes mode);
    Scheduled* _Nullable firstTimer(Modes mode);
    std::optional<Time> nextMoment(Modes mode);

    Clock& clock_;
    std::mutex mutex_;
    std::deque<Performed> performed_;
    std::vector<Scheduled> timers_;
    std::deque<std::function<void()>> events_;
    std::vector<Happening> happenings_;
    unsigned long timerCount_ = 0;
    std::atomic<bool> isAwake_ = true; // asleep, it runs no blocks
};

} // namespace fakes
