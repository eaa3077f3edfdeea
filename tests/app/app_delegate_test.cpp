#include "app/app_delegate.h"

#include "capture/screenshot_manager.h"
#include "setup_windows/onboarding_window_controller.h"
#include "tests/support/desktop_test.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class AppDelegateTest : public DesktopTest {
protected:
    void SetUp() override {
        desktop.preferences.store(kHasCompletedOnboarding, true);
        desktop.application.setDelegate(delegate.get());
    }
    void TearDown() override {
        // A registered hotkey keeps its delegate alive.
        if (delegate) delegate->unregisterHotkey();
    }

    [[nodiscard]] bool isPermissionsWindowOpen() const {
        return slots.sharedPermissionsWindow != nullptr;
    }

    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(context, updates, product);
};

TEST_F(AppDelegateTest, HasRegisteredNothingBeforeLaunch) {
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 0U);
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_EQ(delegate->previousFrontmostApp(), std::nullopt);
    EXPECT_THAT(effectsOf(desktop.journal), IsEmpty());
}

TEST_F(AppDelegateTest, LaunchInstallsTheHandlerAndThenRegistersTheDefaultHotkey) {
    desktop.application.launch();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::Launched{}), Effect(effect::LoginItemAsked{}),
                            Effect(effect::HandlerInstalled{}),
                            Effect(effect::HotKeyRegistered{19, 768, {0x54524f56, 1}})));
}

TEST_F(AppDelegateTest, LaunchRegistersTheRecordedHotkey) {
    desktop.preferences.store(kHotkeyIsCustom, true);
    desktop.preferences.store(kHotkeyKeyCode, std::int64_t{122});
    desktop.preferences.store(kHotkeyModifiers, std::int64_t{6144});
    desktop.application.launch();
    EXPECT_THAT(desktop.hotkeys.combinations(), ElementsAre(KeyCombination{122, 6144}));
}

TEST_F(AppDelegateTest, LaunchAsksForNoPermissionAndActivatesNothing) {
    desktop.application.launch();
    EXPECT_EQ(desktop.journal.count<effect::PermissionAsked>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
    EXPECT_FALSE(isPermissionsWindowOpen());
}

TEST_F(AppDelegateTest, AFirstRunOpensTheOnboardingWindowAfterTheHotkeyIsThere) {
    desktop.preferences.remove(kHasCompletedOnboarding);
    desktop.application.launch();
    EXPECT_NE(slots.sharedOnboardingWindow, nullptr);
    EXPECT_THAT((only<effect::HotKeyRegistered, effect::OrderedFront, effect::WindowCentered,
                      effect::MadeKey, effect::ActivationAsked>(desktop.journal)),
                ElementsAre(at(0s, effect::HotKeyRegistered{19, 768, {0x54524f56, 1}}),
                            at(0s, effect::OrderedFront{1}), at(0s, effect::MadeKey{1}),
                            at(0s, effect::WindowCentered{1}), at(0s, effect::OrderedFront{1}),
                            at(0s, effect::ActivationAsked{false})));
}

TEST_F(AppDelegateTest, AnUnfinishedOnboardingIsAFirstRunAndAFinishedOneIsNot) {
    desktop.preferences.store(kHasCompletedOnboarding, false);
    delegate->applicationDidFinishLaunching();
    EXPECT_NE(slots.sharedOnboardingWindow, nullptr);
    slots.sharedOnboardingWindow->window()->close();
    desktop.preferences.store(kHasCompletedOnboarding, true);
    delegate->applicationDidFinishLaunching();
    EXPECT_EQ(slots.sharedOnboardingWindow, nullptr);
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

TEST_F(AppDelegateTest, RegisteringTwiceLeavesOneHotkeyAndOneHandler) {
    delegate->registerHotkey({19, 768});
    desktop.journal.clear();
    delegate->registerHotkey({122, 6144});
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::HotKeyUnregistered{19, 768}),
                            Effect(effect::HandlerRemoved{}), Effect(effect::HandlerInstalled{}),
                            Effect(effect::HotKeyRegistered{122, 6144, {0x54524f56, 1}})));
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 1U);
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 1U);
}

TEST_F(AppDelegateTest, TheSameHotkeyCanBeRegisteredAgain) {
    delegate->registerHotkey({19, 768});
    delegate->registerHotkey({19, 768});
    EXPECT_THAT(desktop.hotkeys.combinations(), ElementsAre(KeyCombination{19, 768}));
}

TEST_F(AppDelegateTest, TerminationTakesTheHotkeyAndThenTheHandlerBack) {
    desktop.application.launch();
    desktop.journal.clear();
    desktop.application.terminate();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::HotKeyUnregistered{19, 768}),
                            Effect(effect::HandlerRemoved{}), Effect(effect::Terminated{})));
}

TEST_F(AppDelegateTest, TerminationBeforeLaunchDoesNothing) {
    delegate->applicationWillTerminate();
    delegate->applicationWillTerminate();
    EXPECT_THAT(effectsOf(desktop.journal), IsEmpty());
}

TEST_F(AppDelegateTest, ARefusedHotkeyGoesUnreportedAndLeavesTheHandler) {
    desktop.hotkeys.takeElsewhere({19, 768});
    desktop.application.launch();
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 1U);
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    desktop.application.terminate();
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 0U);
}

TEST_F(AppDelegateTest, ARefusedHandlerGoesUnreportedAndTheHotkeyIsRegisteredAllTheSame) {
    desktop.faults.failOnce(Operation::installEventHandler);
    desktop.application.launch();
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 1U);
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 0U);
    desktop.user.pressDefaultHotkey();
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    desktop.application.terminate();
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
}

TEST_F(AppDelegateTest, AHotkeyPressIsHandledAndStartsACapture) {
    desktop.application.launch();
    desktop.user.pressDefaultHotkey();
    EXPECT_TRUE(delegate->screenshotManager().isCapturing());
    EXPECT_THAT(desktop.journal.all<effect::HotKeyHandled>(),
                ElementsAre(effect::HotKeyHandled{0}));
}

TEST_F(AppDelegateTest, AHandlerWithoutUserDataHandlesNothing) {
    struct KeepsHandler final : HotkeyService {
        std::optional<EventHandlerRef> installEventHandler(HotKeyHandler given, void*) override {
            handler = given;
            return std::nullopt;
        }
        void removeEventHandler(EventHandlerRef) override {}
        std::optional<EventHotKeyRef> registerEventHotKey(std::uint32_t, std::uint32_t,
                                                          EventHotKeyId) override {
            return std::nullopt;
        }
        void unregisterEventHotKey(EventHotKeyRef) override {}
        Registration suspend() override { return {}; }
        HotKeyHandler handler = nullptr;
    } service;
    auto const other =
        AppDelegate::make({with(platform, platform.application, service), slots}, updates, product);
    other->registerHotkey(kDefaultHotkey);
    ASSERT_NE(service.handler, nullptr);
    EXPECT_EQ(service.handler(nullptr), -9874);
    other->unregisterHotkey();
}

TEST_F(AppDelegateTest, ARegisteredHotkeyKeepsTheDelegateUntilItIsTakenBack) {
    std::weak_ptr<AppDelegate> const weak = delegate;
    delegate->registerHotkey(kDefaultHotkey);
    delegate.reset();
    ASSERT_FALSE(weak.expired());
    desktop.user.pressDefaultHotkey();
    EXPECT_TRUE(weak.lock()->screenshotManager().isCapturing());
    weak.lock()->unregisterHotkey();
    EXPECT_TRUE(weak.expired());
}

TEST_F(AppDelegateTest, WithoutAccessibilityItOpensThePermissionsWindowAndNothingElse) {
    desktop.permissions.revoke(Permission::accessibility);
    desktop.permissions.revoke(Permission::screenRecording);
    delegate->triggerCapture();
    EXPECT_TRUE(isPermissionsWindowOpen());
    // The trigger asks once; the window then asks for both.
    EXPECT_THAT(desktop.journal.all<effect::PermissionAsked>(),
                ElementsAre(effect::PermissionAsked{Permission::accessibility, false},
                            effect::PermissionAsked{Permission::accessibility, false},
                            effect::PermissionAsked{Permission::screenRecording, false}));
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
}

TEST_F(AppDelegateTest, WithoutScreenRecordingItOpensThePermissionsWindowAndNothingElse) {
    desktop.workspace.bringToFront(desktop.workspace.start({}).processIdentifier);
    desktop.journal.clear();
    desktop.permissions.revoke(Permission::screenRecording);
    delegate->triggerCapture();
    EXPECT_TRUE(isPermissionsWindowOpen());
    EXPECT_THAT(desktop.journal.all<effect::PermissionAsked>(),
                ElementsAre(effect::PermissionAsked{Permission::accessibility, true},
                            effect::PermissionAsked{Permission::screenRecording, false},
                            effect::PermissionAsked{Permission::accessibility, true},
                            effect::PermissionAsked{Permission::screenRecording, false}));
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_EQ(delegate->previousFrontmostApp(), std::nullopt);
}

TEST_F(AppDelegateTest, RemembersWhatWasInFrontBeforeTheOverlayEvenWhenTheTriggerIsDropped) {
    auto const first = desktop.workspace.start({}).processIdentifier;
    desktop.workspace.bringToFront(first);
    delegate->triggerCapture();
    ASSERT_EQ(desktop.workspace.frontmost(), kTrovelProcess);
    ASSERT_TRUE(delegate->previousFrontmostApp());
    EXPECT_EQ(delegate->previousFrontmostApp()->processIdentifier, first);
    auto const second = desktop.workspace.start({}).processIdentifier;
    desktop.workspace.bringToFront(second);
    delegate->triggerCapture();
    EXPECT_EQ(delegate->previousFrontmostApp()->processIdentifier, second);
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    desktop.workspace.bringToFront(0);
    delegate->triggerCapture();
    EXPECT_EQ(delegate->previousFrontmostApp(), std::nullopt);
}

} // namespace
} // namespace trovel
