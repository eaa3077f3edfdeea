#pragma once

#include "platform/platform.h"
#include "platform/running_application.h"

#include <functional>
#include <memory>

namespace trovel {

/// Brings a target to the front and waits until it is there. Main thread only.
class TargetActivation {
public:
    /// `owner` keeps this object alive; blocks that wait hold it weakly.
    TargetActivation(Platform const& platform, std::weak_ptr<void> owner)
        : platform_(platform), owner_(std::move(owner)) {}

    /// Asks `app` to come to the front, by its name. Nothing tells whether it does.
    void activateWithAppleScript(RunningApplication const& app);

    /// Watches until `app` is in front, then runs `action` half a second later; after the last
    /// attempt, says so in an alert instead. `attempt` counts the checks already made.
    void waitForFrontmost(RunningApplication const& app, int attempt, std::function<void()> action);

private:
    Platform platform_;
    std::weak_ptr<void> owner_;
};

} // namespace trovel
