#include "delivery/target_activation.h"

#include "delivery/standard_alert.h"
#include "platform/activation_script.h"
#include "platform/main_queue.h"
#include "platform/script_runner.h"
#include "platform/workspace.h"

#include <chrono>
#include <utility>

namespace trovel {

namespace {

constexpr std::chrono::milliseconds kFrontmostToAction{500};
constexpr std::chrono::milliseconds kBetweenChecks{100};
constexpr int kLastAttempt = 20;

} // namespace

void TargetActivation::activateWithAppleScript(RunningApplication const& app) {
    platform_.scripts.execute(activationScript(app.localizedName.value_or("")));
}

void TargetActivation::waitForFrontmost(RunningApplication const& app, int attempt,
                                        std::function<void()> action) {
    auto const frontmost = platform_.workspace.frontmostApplication();
    if (frontmost && frontmost->processIdentifier == app.processIdentifier) {
        platform_.mainQueue.after(kFrontmostToAction, std::move(action));
        return;
    }
    if (attempt < kLastAttempt) {
        platform_.mainQueue.after(kBetweenChecks,
                                  [weak = self_, app, attempt, action = std::move(action)] {
                                      if (auto const self = weak.lock())
                                          self->waitForFrontmost(app, attempt + 1, action);
                                  });
        return;
    }
    showStandardAlert(platform_, "Could not bring the target app to front. The screenshot is on "
                                 "your clipboard — paste it manually.");
}

} // namespace trovel
