#pragma once

#include "app/product.h"
#include "app/status_menu.h"
#include "capture/capture_pipeline.h"
#include "delivery/ai_app_detector.h"
#include "delivery/terminal_mode.h"
#include "platform/application.h"
#include "platform/hotkey_service.h"
#include "platform/platform.h"
#include "platform/running_application.h"
#include "settings/hotkey.h"
#include "settings/preferences.h"
#include "setup_windows/window_context.h"

#include <memory>
#include <optional>

namespace trovel {

class AutoPaster;
class ScreenshotManager;
class SharedUpdateManager;
class StatusItem;

/// The application's delegate: it owns the status item with its menu, the global hotkey and the
/// objects that live as long as the process, and every action of the user reaches the program
/// through it. Main thread only.
class AppDelegate final : public ApplicationDelegate,
                          public std::enable_shared_from_this<AppDelegate> {
public:
    /// Everything that `context` names, and `updates`, must outlive the delegate.
    [[nodiscard]] static std::shared_ptr<AppDelegate>
    make(WindowContext const& context, SharedUpdateManager& updates, Product product);
    ~AppDelegate();

    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;

    /// Brings the status menu up to date.
    void menuWillOpen();

    /// Starts a capture, or opens the permissions window when a grant is missing.
    void triggerCapture();
    void toggleAutoSend();
    void terminalTargetSelected(MenuItem const& sender);
    void aiAppSelected(MenuItem const& sender);
    void showChangeApp();
    void showChangeHotkey();
    void toggleLaunchAtLogin();
    void showPermissions();
    void checkForUpdates(MenuItem const& sender);
    void showWhatsNew();
    void showHelp();
    void showAbout();
    void quitApp();

    /// Puts the global hotkey in force, instead of the one before. A refusal by the system goes
    /// unreported: the hotkey then does not fire.
    void registerHotkey(Hotkey hotkey);
    void unregisterHotkey();

    /// The application that was in front when the last capture was triggered.
    [[nodiscard]] std::optional<RunningApplication> const& previousFrontmostApp() const {
        return previousFrontmostApp_;
    }
    [[nodiscard]] ScreenshotManager const& screenshotManager() const { return *screenshotManager_; }
    /// The menu and its rows. They exist once launching has finished; asking earlier is fatal.
    [[nodiscard]] StatusMenu& statusMenu();

private:
    AppDelegate(WindowContext const& context, SharedUpdateManager& updates, Product product);

    static std::int32_t hotkeyPressed(void* userData);
    void makePipeline();
    void buildStatusItem();
    [[nodiscard]] StatusMenu::Actions menuActions();

    WindowContext context_;
    SharedUpdateManager& updates_;
    Platform platform_;
    Preferences preferences_;
    Product product_;
    std::unique_ptr<StatusItem> statusItem_;
    std::optional<EventHotKeyRef> hotKeyRef_;
    std::optional<EventHandlerRef> eventHandlerRef_;
    std::shared_ptr<ScreenshotManager> screenshotManager_;
    AIAppDetector aiAppDetector_;
    std::shared_ptr<AutoPaster> autoPaster_;
    std::optional<StatusMenu> statusMenu_; // set when launching has finished
    std::optional<RunningApplication> previousFrontmostApp_;
    // The system holds a bare pointer to the delegate while the handler is installed; this
    // reference keeps it valid.
    std::shared_ptr<AppDelegate> hotkeyUserDataPtr_;
    // Set by make(), once there is an owner to name.
    std::optional<TerminalMode> terminalMode_;
    std::optional<CapturePipeline> pipeline_;
};

} // namespace trovel
