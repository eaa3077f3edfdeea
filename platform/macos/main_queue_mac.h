#pragma once

#include "platform/main_queue.h"

#include <memory>

namespace trovel {

/// The main run loop in its common modes. The main dispatch queue would not do: while one of its
/// blocks shows a modal alert, it runs no other, and an overlay that came up meanwhile could not be
/// taken down. Blocks and timers of the common modes go on in the alert's own loop.
class MainQueueMac final : public MainQueue {
public:
    MainQueueMac();

    void post(Block block) override;
    void after(Duration delay, Block block) override;
    Registration every(Duration interval, Block block) override;

private:
    /// What was posted and has not begun, in order.
    struct Posted;

    static void requestTurn(std::shared_ptr<Posted> posted);
    static void runNext(std::shared_ptr<Posted> const& posted);

    std::shared_ptr<Posted> posted_; // shared with the run loop's blocks
};

} // namespace trovel
