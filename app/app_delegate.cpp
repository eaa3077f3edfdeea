#include "app/app_delegate.h"

#include "app/about_alert.h"
#include "app/launch_at_login_manager.h"
#include "app/status_icon.h"
#include "app/update_manager.h"
#include "capture/screenshot_manager.h"
#include "delivery/auto_paster.h"
#include "platform/alerts.h"
#include "platform/fatal.h"
#include "platform/ui/status_bar.h"
#include "platform/weak_call.h"
#include "platform/workspace.h"
#include "setup_windows/change_app_window_controller.h"
#include "setup_windows/hotkey_recorder_window_controller.h"
#include "setup_windows/onboarding_window_controller.h"
#include "setup_windows/permissions_window_controller.h"

#include <utility>

namespace trovel {

namespace {

constexpr EventHotKeyId kHotKeyId{0x54524f56, 1}; // "TROV"

} // namespace

std::shared_ptr<AppDelegate> AppDelegate::make(WindowContext const& context,
                                               SharedUpdateManager& updates, Product product) {
    std::shared_ptr<AppDelegate> delegate(new AppDelegate(context, updates, std::move(product)));
    delegate->makePipeline();
    return delegate;
}

AppDelegate::AppDelegate(WindowContext const& context, SharedUpdateManager& updates,
                         Product product)
    : context_(context), updates_(updates), platform_(context.platform),
      preferences_(platform_.preferences), product_(std::move(product)),
      screenshotManager_(std::make_shared<ScreenshotManager>(platform_)),
      aiAppDetector_(platform_.workspace, preferences_),
      autoPaster_(std::make_shared<AutoPaster>(platform_)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::makePipeline() {
    terminalMode_.emplace(
        platform_, shared_from_this(),
        TerminalMode::Callbacks{
            .titleOfTarget =
                [this](std::int64_t tag) { return statusMenu().titleOfTerminalTarget(tag); },
            .previousFrontmostApp = [this] { return previousFrontmostApp_; }});
    pipeline_.emplace(
        platform_, shared_from_this(),
        CapturePipeline::Services{*screenshotManager_, aiAppDetector_, *autoPaster_},
        CapturePipeline::Callbacks{
            .showPermissionsWindow = [this] { showPermissionsWindow(context_, nullptr); },
            .setPreviousFrontmostApp =
                [this](std::optional<RunningApplication> app) {
                    previousFrontmostApp_ = std::move(app);
                },
            .deliverToTerminal =
                [this](Image const& image) { terminalMode_->deliverToTerminal(image); }});
}

void AppDelegate::applicationDidFinishLaunching() {
    buildStatusItem();
    registerHotkey(loadHotkey(preferences_));
    if (!preferences_.hasCompletedOnboarding()) showOnboardingWindow(context_);
}

void AppDelegate::applicationWillTerminate() {
    unregisterHotkey();
}

void AppDelegate::buildStatusItem() {
    statusItem_ = platform_.statusBar.makeSquareItem();
    if (statusItem_->hasButton()) statusItem_->setButtonImage(statusIcon(product_.displayName));
    statusMenu_.emplace(platform_, product_, menuActions());
    statusMenu_->menu()->setWillOpen(weakCall(*this, &AppDelegate::menuWillOpen));
    statusItem_->setMenu(statusMenu_->menu());
}

StatusMenu::Actions AppDelegate::menuActions() {
    // Every row has this delegate as its target, which outlives the menu that it owns.
    return {
        .triggerCapture = [this] { triggerCapture(); },
        .toggleAutoSend = [this] { toggleAutoSend(); },
        .terminalTargetSelected = [this](auto const& sender) { terminalTargetSelected(sender); },
        .aiAppSelected = [this](auto const& sender) { aiAppSelected(sender); },
        .showChangeApp = [this] { showChangeApp(); },
        .showChangeHotkey = [this] { showChangeHotkey(); },
        .toggleLaunchAtLogin = [this] { toggleLaunchAtLogin(); },
        .showPermissions = [this] { showPermissions(); },
        .checkForUpdates = [this](MenuItem const& sender) { checkForUpdates(sender); },
        .showWhatsNew = [this] { showWhatsNew(); },
        .showHelp = [this] { showHelp(); },
        .showAbout = [this] { showAbout(); },
        .quitApp = [this] { quitApp(); },
    };
}

StatusMenu& AppDelegate::statusMenu() {
    if (!statusMenu_) fatal("the status menu was asked for before launching had finished");
    return *statusMenu_;
}

void AppDelegate::menuWillOpen() {
    statusMenu().refresh();
}

void AppDelegate::triggerCapture() {
    pipeline_->triggerCapture();
}

void AppDelegate::toggleAutoSend() {
    preferences_.setAutoSendEnabled(!preferences_.autoSendEnabled());
    statusMenu().refreshAutoSend();
}

void AppDelegate::terminalTargetSelected(MenuItem const& sender) {
    terminalMode_->terminalTargetSelected(sender.tag());
    statusMenu().updateTerminalMenuState();
}

void AppDelegate::aiAppSelected(MenuItem const& sender) {
    if (auto const& name = sender.representedObject()) preferences_.setPreferredAIApp(*name);
}

void AppDelegate::showChangeApp() {
    showChangeAppWindow(context_);
}

void AppDelegate::showChangeHotkey() {
    platform_.application.activate();
    showHotkeyRecorderWindow(
        context_, [weak = weak_from_this()](std::uint32_t keyCode, std::uint32_t modifiers) {
            auto const self = weak.lock();
            if (!self) return;
            saveHotkey(self->preferences_, {keyCode, modifiers});
            self->registerHotkey({keyCode, modifiers});
            self->statusMenu().refreshTitle();
        });
}

void AppDelegate::toggleLaunchAtLogin() {
    if (LaunchAtLoginManager::isEnabled(platform_)) {
        LaunchAtLoginManager::disable(platform_);
    } else {
        LaunchAtLoginManager::enable(platform_);
    }
    statusMenu().refreshLaunchAtLogin();
}

void AppDelegate::showPermissions() {
    platform_.application.activate();
    showPermissionsWindow(context_, nullptr);
}

void AppDelegate::checkForUpdates(MenuItem const& sender) {
    updates_.get(platform_.updater).checkForUpdates(&sender);
}

void AppDelegate::showWhatsNew() {
    platform_.workspace.openUrl(product_.changelogUrl);
}

void AppDelegate::showHelp() {
    platform_.workspace.openUrl("mailto:" + product_.supportEmail);
}

void AppDelegate::showAbout() {
    platform_.application.activate();
    platform_.alerts.runModal(aboutAlert(platform_.bundle, preferences_, product_));
}

void AppDelegate::quitApp() {
    platform_.application.terminate();
}

void AppDelegate::registerHotkey(Hotkey hotkey) {
    unregisterHotkey();
    hotkeyUserDataPtr_ = shared_from_this();
    eventHandlerRef_ = platform_.hotkeys.installEventHandler(&AppDelegate::hotkeyPressed,
                                                             hotkeyUserDataPtr_.get());
    hotKeyRef_ = platform_.hotkeys.registerEventHotKey(hotkey.keyCode, hotkey.modifiers, kHotKeyId);
}

void AppDelegate::unregisterHotkey() {
    if (auto const hotKey = std::exchange(hotKeyRef_, std::nullopt)) {
        platform_.hotkeys.unregisterEventHotKey(*hotKey);
    }
    if (auto const handler = std::exchange(eventHandlerRef_, std::nullopt)) {
        platform_.hotkeys.removeEventHandler(*handler);
    }
    hotkeyUserDataPtr_.reset();
}

std::int32_t AppDelegate::hotkeyPressed(void* userData) {
    if (userData == nullptr) return kEventNotHandledErr;
    static_cast<AppDelegate*>(userData)->triggerCapture();
    return kNoErr;
}

} // namespace trovel
