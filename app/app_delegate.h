#pragma once

#include "app/hotkey.h"
#include "app/preferences.h"
#include "capture/capture_pipeline.h"
#include "delivery/ai_app_detector.h"
#include "platform/application.h"
#include "platform/hotkey_service.h"
#include "platform/platform.h"
#include "platform/running_application.h"

#include <functional>
#include <memory>
#include <optional>

namespace trovel {

class AutoPaster;
class ScreenshotManager;

/// The application's delegate: it owns the global hotkey and the objects that live as long as the
/// process, and every action of the user reaches the program through it. Main thread only.
class AppDelegate final : public ApplicationDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
public:
    /// The operations that other parts of the program hand in. All of them must be set.
    struct Hooks {
        /// Opens the first-run window in the middle of the screen and activates the application.
        std::function<void()> showOnboardingWindow;
        /// Opens the permissions window, which calls `onComplete`, if there is one, when the user
        /// is through with it.
        std::function<void(std::function<void()> onComplete)> showPermissionsWindow;
        std::function<void(Image const&)> deliverToTerminal;
    };

    /// Everything that `platform` names must outlive the delegate.
    [[nodiscard]] static std::shared_ptr<AppDelegate> make(Platform const& platform, Hooks hooks);
    ~AppDelegate();

    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;

    /// Starts a capture, or asks for the permissions window when a grant is missing.
    void triggerCapture();

    /// Puts the global hotkey in force, instead of the one before. A refusal by the system goes
    /// unreported: the hotkey then does not fire.
    void registerHotkey(Hotkey hotkey);
    void unregisterHotkey();

    /// The application that was in front when the last capture was triggered.
    [[nodiscard]] std::optional<RunningApplication> const& previousFrontmostApp() const {
        return previousFrontmostApp_;
    }
    [[nodiscard]] ScreenshotManager const& screenshotManager() const { return *screenshotManager_; }

private:
    AppDelegate(Platform const& platform, Hooks hooks);

    static std::int32_t hotkeyPressed(void* userData);

    Platform platform_;
    Preferences preferences_;
    Hooks hooks_;
    std::optional<EventHotKeyRef> hotKeyRef_;
    std::optional<EventHandlerRef> eventHandlerRef_;
    std::shared_ptr<ScreenshotManager> screenshotManager_;
    AIAppDetector aiAppDetector_;
    std::shared_ptr<AutoPaster> autoPaster_;
    std::optional<RunningApplication> previousFrontmostApp_;
    // The system holds a bare pointer to the delegate while the handler is installed; this
    // reference keeps it valid.
    std::shared_ptr<AppDelegate> hotkeyUserDataPtr_;
    std::optional<CapturePipeline> pipeline_; // set by make(), once there is an owner to name
};

} // namespace trovel
