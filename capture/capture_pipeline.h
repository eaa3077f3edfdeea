#pragma once

#include "capture/capture_error.h"
#include "delivery/target_activation.h"
#include "platform/platform.h"
#include "platform/running_application.h"
#include "settings/preferences.h"

#include <functional>
#include <memory>
#include <optional>

namespace trovel {

class AIAppDetector;
class AutoPaster;
class ScreenshotManager;

/// The road of a capture, from the user's request to the application that receives the picture.
/// Main thread only.
class CapturePipeline {
public:
    /// The owner's objects, which live as long as it does.
    struct Services {
        ScreenshotManager& screenshotManager;
        AIAppDetector const& aiAppDetector;
        AutoPaster& autoPaster;
    };

    /// What lies outside the road. All of them must be set.
    struct Callbacks {
        std::function<void()> showPermissionsWindow;
        std::function<void(std::optional<RunningApplication>)> setPreviousFrontmostApp;
        std::function<void(Image const&)> deliverToTerminal;
    };

    /// A part of `owner`, which keeps it alive. Blocks that outlive a step hold it weakly, except
    /// the one between a picture and its delivery.
    CapturePipeline(Platform const& platform, std::shared_ptr<void> const& owner, Services services,
                    Callbacks callbacks);
    CapturePipeline(CapturePipeline const&) = delete;
    CapturePipeline& operator=(CapturePipeline const&) = delete;
    ~CapturePipeline() = default;

    /// Starts a capture. Without both grants it only asks for the permissions window; during a
    /// capture it does no more than note the application in front.
    void triggerCapture();

private:
    void handleCaptureResult(CaptureResult const& result);
    void deliverCapture(Image const& image);
    void deliverToAIApp();

    Platform platform_;
    std::weak_ptr<CapturePipeline> self_;
    Services services_;
    Callbacks callbacks_;
    Preferences preferences_;
    TargetActivation activation_;
};

} // namespace trovel
