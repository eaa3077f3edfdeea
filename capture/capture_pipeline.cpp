#include "capture/capture_pipeline.h"

#include "capture/screenshot_manager.h"
#include "delivery/ai_app_detector.h"
#include "delivery/auto_paster.h"
#include "delivery/standard_alert.h"
#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/permissions.h"
#include "platform/workspace.h"

#include <chrono>
#include <utility>

namespace trovel {

namespace {

constexpr std::chrono::milliseconds kResultToDelivery{300};

} // namespace

CapturePipeline::CapturePipeline(Platform const& platform, std::shared_ptr<void> const& owner,
                                 Services services, Callbacks callbacks)
    : platform_(platform), self_(std::shared_ptr<CapturePipeline>(owner, this)),
      services_(services), callbacks_(std::move(callbacks)), preferences_(platform.preferences),
      activation_(platform, owner) {}

void CapturePipeline::triggerCapture() {
    auto const& permissions = platform_.permissions;
    if (!permissions.isAccessibilityTrusted() || !permissions.preflightScreenCapture()) {
        callbacks_.showPermissionsWindow();
        return;
    }
    // Asked before the overlay appears: this is where the user was working.
    callbacks_.setPreviousFrontmostApp(platform_.workspace.frontmostApplication());
    services_.screenshotManager.startCapture([weak = self_](CaptureResult const& result) {
        if (auto const self = weak.lock()) self->handleCaptureResult(result);
    });
}

void CapturePipeline::handleCaptureResult(CaptureResult const& result) {
    if (!result) {
        if (auto const text = userText(result.error())) showStandardAlert(platform_, *text);
        return;
    }
    // Strong: a picture that was taken is delivered, whoever else lets go of the owner.
    platform_.mainQueue.after(
        kResultToDelivery, [self = self_.lock(), image = *result] { self->deliverCapture(image); });
}

void CapturePipeline::deliverCapture(Image const& image) {
    if (preferences_.terminalModeEnabled()) {
        callbacks_.deliverToTerminal(image);
        return;
    }
    platform_.pasteboard.clearContents();
    // A refusal goes unreported: the delivery goes on, and the paste brings nothing.
    static_cast<void>(platform_.pasteboard.writeImage(image));
    deliverToAIApp();
}

void CapturePipeline::deliverToAIApp() {
    auto const target = services_.aiAppDetector.detectTargetApp();
    if (!target) {
        showStandardAlert(platform_,
                          "No AI chat app detected. Open Claude, ChatGPT, Gemini, or Perplexity.");
        return;
    }
    activation_.activateWithAppleScript(target->app);
    activation_.waitForFrontmost(target->app, 0, [weak = self_, target = *target] {
        if (auto const self = weak.lock()) self->services_.autoPaster.paste(target);
    });
}

} // namespace trovel
