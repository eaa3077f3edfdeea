#include "app/app_delegate.h"
#include "capture/screenshot_manager.h"
#include "platform/simulated/simulated_pixels.h"
#include "tests/support/desktop_test.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// The program on a desktop where the user works in an editor and Claude runs behind it, looked at
/// through the journal of the simulated desktop.
class CaptureJournalTest : public DesktopTest {
protected:
    void SetUp() override {
        desktop.preferences.store(kHasCompletedOnboarding, true);
        SimulatedProgram editorProgram;
        editorProgram.localizedName = "Editor";
        editorProgram.bundleIdentifier = "com.example.editor";
        editor = desktop.workspace.start(editorProgram).processIdentifier;
        claude = desktop.workspace.start(chatProgram("Claude", "com.anthropic.claudefordesktop"))
                     .processIdentifier;
        desktop.workspace.bringToFront(editor);
        desktop.application.setDelegate(delegate.get());
        desktop.application.launch();
        desktop.journal.clear();
    }
    void TearDown() override {
        desktop.application.terminate();
        EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
        EXPECT_EQ(desktop.hotkeys.handlerCount(), 0U);
    }

    /// At 1 s the hotkey, at 3 s the release of a drag.
    void captureAtThreeSeconds() {
        desktop.user.wait(1s);
        desktop.user.pressDefaultHotkey();
        desktop.user.wait(2s);
        desktop.user.drag({400, 350}, {100, 150});
    }

    std::int32_t editor = 0;
    std::int32_t claude = 0;
    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(context, updates, product);
};

TEST_F(CaptureJournalTest, FromTheHotkeyToTheSentMessageToTheMillisecond) {
    desktop.preferences.store(kAutoSendEnabled, true);
    captureAtThreeSeconds();
    desktop.user.wait(1min);
    Picture const picture{1, {200, 1100, 600, 400}, {300, 200}};
    Point const click{500, 590};
    EXPECT_THAT(
        desktop.journal.entries(),
        ElementsAre(at(1s, effect::PermissionAsked{Permission::accessibility, true}),
                    at(1s, effect::PermissionAsked{Permission::screenRecording, true}),
                    at(1s, effect::CaptureSessionBegan{}), at(1s, effect::OrderedFront{1}),
                    at(1s, effect::MonitorAdded{}), at(1s, effect::ActivationAsked{true}),
                    at(1s, effect::FrontmostChanged{kTrovelProcess}),
                    at(1s, effect::OrderedFront{1}), at(1s, effect::MadeKey{1}),
                    at(1s, effect::CrosshairPushed{}), at(1s, effect::HotKeyHandled{0}),
                    at(3s, effect::MonitorRemoved{}), at(3s, effect::CursorPopped{}),
                    at(3s, effect::OrderedOut{1}), at(3020ms, effect::DisplaysListed{}),
                    at(3020ms, effect::DisplayCaptured{{1, 1440, 900}, {2880, 1800, false, false}}),
                    at(3020ms, effect::CaptureSessionEnded{}),
                    at(3320ms, effect::PasteboardCleared{}),
                    at(3320ms, effect::PictureWritten{picture}),
                    at(3320ms, effect::ScriptExecuted{"tell application \"Claude\" to activate"}),
                    at(3370ms, effect::FrontmostChanged{claude}),
                    at(3920ms, effect::MousePosted{MouseAction::leftDown, click}),
                    at(3920ms, effect::MousePosted{MouseAction::leftUp, click}),
                    at(3920ms, effect::Clicked{claude, click}),
                    at(4220ms, effect::KeyPosted{9, KeyAction::down, 0x100000}),
                    at(4220ms, effect::KeyPosted{9, KeyAction::up, 0x100000}),
                    at(4220ms, effect::Pasted{claude, picture}),
                    at(5020ms, effect::KeyPosted{36, KeyAction::down, 0}),
                    at(5020ms, effect::KeyPosted{36, KeyAction::up, 0}),
                    at(5020ms, effect::Typed{claude, 36, 0})));
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(CaptureJournalTest, ThePictureIsTheScreenWithoutDimmingAndPointer) {
    captureAtThreeSeconds();
    desktop.user.wait(1min);
    auto const& pixels = dynamic_cast<SimulatedPixels const&>(*desktop.pasteboard.image().pixels);
    EXPECT_TRUE(pixels.isClean());
    EXPECT_EQ(pixels.colorAt(0, 0), desktopColor(1, 200, 1100));
}

TEST_F(CaptureJournalTest, ATargetThatIsInFrontAlreadyIsPastedIntoHalfASecondAfterTheCheck) {
    desktop.application.setSelfActivation(SelfActivation::changesNothing);
    desktop.workspace.bringToFront(claude);
    captureAtThreeSeconds();
    desktop.user.wait(1min);
    EXPECT_THAT(desktop.journal.timesOf<effect::Clicked>(), ElementsAre(3820ms));
}

TEST_F(CaptureJournalTest, AHeldHotkeyIsOnePress) {
    desktop.user.holdKey(19, kFlagCommand | kFlagShift, 30);
    EXPECT_EQ(desktop.journal.count<effect::HotKeyHandled>(), 1U);
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    desktop.user.pressKey(53);
    desktop.queue.drain();
}

TEST_F(CaptureJournalTest, TwoPressesOpenOneOverlay) {
    desktop.user.pressDefaultHotkey();
    desktop.user.pressDefaultHotkey();
    EXPECT_EQ(desktop.journal.count<effect::HotKeyHandled>(), 2U);
    EXPECT_EQ(desktop.windows.visibleWindows().size(), 1U);
    desktop.user.wait(30s);
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
}

TEST_F(CaptureJournalTest, TerminationDuringTheOverlayLeavesNothingBehind) {
    desktop.user.pressDefaultHotkey();
    desktop.application.terminate();
    delegate.reset();
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    EXPECT_EQ(desktop.capturer.openSessions(), 0);
    EXPECT_EQ(desktop.monitors.count(), 0U);
}

TEST_F(CaptureJournalTest, ADesktopThatEndsWithADeliveryWaitingTakesTheDelegateAlong) {
    captureAtThreeSeconds();
    desktop.user.wait(100ms);
    desktop.user.pressDefaultHotkey(); // and an overlay is up
    desktop.application.terminate();
    delegate.reset();
}

} // namespace
} // namespace trovel
