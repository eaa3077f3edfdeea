#include "app/app_delegate.h"

#include "capture/screenshot_manager.h"
#include "delivery/auto_paster.h"

#include <utility>

namespace trovel {

namespace {

constexpr EventHotKeyId kHotKeyId{0x54524f56, 1}; // "TROV"

} // namespace

std::shared_ptr<AppDelegate> AppDelegate::make(Platform const& platform, Hooks hooks) {
    std::shared_ptr<AppDelegate> delegate(new AppDelegate(platform, std::move(hooks)));
    auto* const self = delegate.get();
    self->pipeline_.emplace(
        platform, delegate,
        CapturePipeline::Services{*self->screenshotManager_, self->aiAppDetector_,
                                  *self->autoPaster_},
        CapturePipeline::Callbacks{
            .showPermissionsWindow = [self] { self->hooks_.showPermissionsWindow(nullptr); },
            .setPreviousFrontmostApp =
                [self](std::optional<RunningApplication> app) {
                    self->previousFrontmostApp_ = std::move(app);
                },
            .deliverToTerminal =
                [self](Image const& image) { self->hooks_.deliverToTerminal(image); }});
    return delegate;
}

AppDelegate::AppDelegate(Platform const& platform, Hooks hooks)
    : platform_(platform), preferences_(platform.preferences), hooks_(std::move(hooks)),
      screenshotManager_(std::make_shared<ScreenshotManager>(platform)),
      aiAppDetector_(platform.workspace, preferences_),
      autoPaster_(std::make_shared<AutoPaster>(platform)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    registerHotkey(loadHotkey(preferences_));
    if (!preferences_.hasCompletedOnboarding()) hooks_.showOnboardingWindow();
}

void AppDelegate::applicationWillTerminate() {
    unregisterHotkey();
}

void AppDelegate::triggerCapture() {
    pipeline_->triggerCapture();
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
