#include "capture/screenshot_manager.h"
#include "platform/application.h"
#include "platform/preference_store.h"
#include "settings/preferences.h"
#include "tests/scenarios/scenario_world.h"

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// The program on a desktop where the user works in an editor and Claude runs behind it.
class CaptureToChatTest : public ScenarioTest {
protected:
    void SetUp() override {
        platform.preferences.setBool(kHasCompletedOnboarding, true);
        editor = world->startProgram("Editor", "com.example.editor");
        claude = world->startProgram("Claude", "com.anthropic.claudefordesktop");
        world->bringToFront(editor);
        launch();
    }
    void TearDown() override { terminate(); }

    /// At 1 s the hotkey, at 3 s the release of a drag.
    void captureAtThreeSeconds() {
        world->wait(1s);
        pressDefaultHotkey();
        world->wait(2s);
        world->drag({400, 350}, {100, 150});
    }

    static constexpr auto kPasted = "paste picture 200,1100,600,400";
    static constexpr auto kClicked = "click 500,590";
    std::int32_t editor = 0;
    std::int32_t claude = 0;
};

TEST_F(CaptureToChatTest, FromTheHotkeyToTheSentMessageToTheMillisecond) {
    platform.preferences.setBool(kAutoSendEnabled, true);
    captureAtThreeSeconds();
    world->wait(1min);
    EXPECT_THAT(world->received(claude),
                ElementsAre(Received{3920ms, kClicked}, Received{4220ms, kPasted},
                            Received{5020ms, "key 36"}));
    EXPECT_THAT(got(editor), IsEmpty());
    EXPECT_EQ(world->visibleWindows(), 0);
}

TEST_F(CaptureToChatTest, WithoutAutomaticSendingNothingIsSubmitted) {
    captureAtThreeSeconds();
    world->wait(1min);
    EXPECT_THAT(got(claude), ElementsAre(kClicked, kPasted));
}

TEST_F(CaptureToChatTest, WhereTheProgramCannotComeToTheFrontTheRoadIsTheSame) {
    world->setActivationIsGranted(false);
    captureAtThreeSeconds();
    world->wait(1min);
    EXPECT_THAT(world->received(claude),
                ElementsAre(Received{3920ms, kClicked}, Received{4220ms, kPasted}));
}

TEST_F(CaptureToChatTest, TwoPressesOpenOneOverlayWhichGoesAfterHalfAMinute) {
    pressDefaultHotkey();
    pressDefaultHotkey();
    EXPECT_EQ(world->visibleWindows(), 1);
    world->wait(29s);
    EXPECT_EQ(world->visibleWindows(), 1);
    world->wait(1s);
    EXPECT_EQ(world->visibleWindows(), 0);
    EXPECT_THAT(got(claude), IsEmpty());
}

TEST_F(CaptureToChatTest, EscapeTakesTheOverlayAwayAndNothingIsDelivered) {
    pressDefaultHotkey();
    world->pressKey(kKeyEscape, 0);
    world->wait(1min);
    EXPECT_EQ(world->visibleWindows(), 0);
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_THAT(got(claude), IsEmpty());
    EXPECT_THAT(got(editor), IsEmpty());
}

TEST_F(CaptureToChatTest, OneCaptureAfterTheOtherAreBothDelivered) {
    for (int round = 0; round < 2; ++round) {
        pressDefaultHotkey();
        world->wait(1s);
        world->drag({400, 350}, {100, 150});
        world->wait(1min);
        world->bringToFront(editor);
    }
    EXPECT_THAT(got(claude), ElementsAre(kClicked, kPasted, kClicked, kPasted));
}

TEST_F(CaptureToChatTest, TerminationDuringTheOverlayLeavesNothingBehind) {
    pressDefaultHotkey();
    platform.application.terminate();
    delegate.reset();
    EXPECT_EQ(world->visibleWindows(), 0);
}

} // namespace
} // namespace trovel
