#pragma once

#include "platform/platform.h"
#include "platform/running_application.h"

#include <functional>
#include <memory>

namespace trovel {

/// Brings a target to the front and waits until it is there. Main thread only.
class TargetActivation {
public:
    /// A part of `owner`, which keeps it alive; blocks that wait hold it weakly.
    TargetActivation(Platform const& platform, std::shared_ptr<void> const& owner)
        : platform_(platform), self_(std::shared_ptr<TargetActivation>(owner, this)) {}
    TargetActivation(TargetActivation const&) = delete;
    TargetActivation& operator=(TargetActivation const&) = delete;
    ~TargetActivation() = default;

    /// Asks `app` to come to the front, by its name. Nothing tells whether it does.
    void activateWithAppleScript(RunningApplication const& app);

    /// Watches until `app` is in front, then runs `action` half a second later; after the last
    /// attempt, says so in an alert instead. `attempt` counts the checks already made.
    void waitForFrontmost(RunningApplication const& app, int attempt, std::function<void()> action);

private:
    Platform platform_;
    std::weak_ptr<TargetActivation> self_;
};

} // namespace trovel
