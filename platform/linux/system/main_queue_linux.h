#pragma once

#include "platform/main_queue.h"

#include <memory>

namespace trovel {

/// The main thread's schedule on a kernel timer that is set for the next block that is due and is
/// quiet when there is none. It runs nothing by itself: an event loop watches `fileDescriptor` and
/// calls `runDue`, nested loops included.
class MainQueueLinux final : public MainQueue {
public:
    MainQueueLinux();
    ~MainQueueLinux();

    void post(Block block) override;
    void after(Duration delay, Block block) override;
    Registration every(Duration interval, Block block) override;

    /// Readable as long as a block is due.
    [[nodiscard]] int fileDescriptor() const;

    /// Runs what is due now, but nothing that is added meanwhile. A block may run an event loop
    /// that calls this again; the blocks that are left then run there. Main thread only.
    void runDue();

    /// No block runs from now on. They are kept: the caller may be called by one of them.
    void stop();

    /// Drops every block that waits.
    void clear();

private:
    class Schedule;
    struct Repetition;

    void scheduleNext(std::shared_ptr<Repetition> const& repetition);

    std::shared_ptr<Schedule> schedule_; // shared with the registrations, which hold it weakly
};

} // namespace trovel
