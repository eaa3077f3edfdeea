#include "capture/capture_pipeline.h"

#include "capture/screenshot_manager.h"
#include "delivery/ai_app_detector.h"
#include "delivery/auto_paster.h"
#include "platform/simulated/simulated_pixels.h"
#include "tests/support/desktop_test.h"
#include "tests/support/lifetime.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Rect kSelection{100, 150, 300, 200};
constexpr auto kNoTarget = "No AI chat app detected. Open Claude, ChatGPT, Gemini, or Perplexity.";
constexpr auto kNotInFront = "Could not bring the target app to front. The screenshot is on your "
                             "clipboard — paste it manually.";
Picture const kPicture{1, {200, 1100, 600, 400}, {300, 200}};

/// What the delegate is to the pipeline.
struct Owner {
    explicit Owner(Platform const& platform)
        : manager(newShared<ScreenshotManager>(platform)),
          detector(platform.workspace, Preferences(platform.preferences)),
          paster(newShared<AutoPaster>(platform)) {}

    std::shared_ptr<ScreenshotManager> manager;
    AIAppDetector detector;
    std::shared_ptr<AutoPaster> paster;
    std::optional<CapturePipeline> pipeline;
};

/// The journal's times here: a trigger at 0, a release at 0, the picture 20 ms later, its delivery
/// at 320 ms, the target in front at 370 ms and seen there at 420 ms, the click at 920 ms.
class CapturePipelineTest : public DesktopTest {
protected:
    CapturePipelineTest() {
        owner->pipeline.emplace(
            platform, owner,
            CapturePipeline::Services{*owner->manager, owner->detector, *owner->paster},
            CapturePipeline::Callbacks{
                .showPermissionsWindow = [this] { ++permissionWindows; },
                .setPreviousFrontmostApp = [](std::optional<RunningApplication> const&) {},
                .deliverToTerminal =
                    [this](Image const& image) {
                        terminalPictures.push_back(at(desktop.queue.now(), written(image)));
                    }});
    }

    static Effect written(Image const& image) { return effect::PictureWritten{pictureOf(image)}; }
    void startClaude() {
        claude = desktop.workspace.start(chatProgram("Claude", "com.anthropic.claudefordesktop"))
                     .processIdentifier;
    }
    void select() {
        owner->pipeline->triggerCapture();
        desktop.user.drag({kSelection.x, kSelection.y}, {kSelection.maxX(), kSelection.maxY()});
    }
    std::vector<std::string> alerts() const {
        std::vector<std::string> texts;
        for (auto const& shown : desktop.journal.all<effect::AlertShown>()) {
            EXPECT_EQ(shown.alert.messageText, "Trovel");
            texts.push_back(shown.alert.informativeText);
        }
        return texts;
    }
    std::string alertAfterFailure() {
        select();
        desktop.user.wait(1min);
        EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
        EXPECT_FALSE(owner->manager->isCapturing());
        auto const texts = alerts();
        return texts.size() == 1 ? texts.front() : "";
    }

    std::shared_ptr<Owner> owner = newShared<Owner>(platform);
    std::int32_t claude = 0;
    int permissionWindows = 0;
    std::vector<JournalEntry> terminalPictures;
};

TEST_F(CapturePipelineTest, DeliversThreeTenthsOfASecondAfterThePictureToTheAIApp) {
    startClaude();
    select();
    desktop.user.wait(1min);
    auto const road =
        only<effect::PasteboardCleared, effect::PictureWritten, effect::ScriptExecuted,
             effect::MousePosted, effect::KeyPosted, effect::AlertShown>(desktop.journal);
    EXPECT_THAT(
        road,
        ElementsAre(at(320ms, effect::PasteboardCleared{}),
                    at(320ms, effect::PictureWritten{kPicture}),
                    at(320ms, effect::ScriptExecuted{"tell application \"Claude\" to activate"}),
                    at(920ms, effect::MousePosted{MouseAction::leftDown, {500, 590}}),
                    at(920ms, effect::MousePosted{MouseAction::leftUp, {500, 590}}),
                    at(1220ms, effect::KeyPosted{9, KeyAction::down, 0x100000}),
                    at(1220ms, effect::KeyPosted{9, KeyAction::up, 0x100000})));
}

TEST_F(CapturePipelineTest, ATargetThatComesWhileItIsAskedIsInFrontAtTheFirstCheck) {
    startClaude();
    desktop.workspace.program(claude)->activationDelay = 0ms;
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(desktop.journal.timesOf<effect::MousePosted>(), ElementsAre(820ms, 820ms));
}

TEST_F(CapturePipelineTest, InTerminalModeThePictureGoesThereAndNotOnThePasteboard) {
    startClaude();
    desktop.preferences.store(kTerminalModeEnabled, true);
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(terminalPictures, ElementsAre(at(320ms, effect::PictureWritten{kPicture})));
    EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 0U);
}

TEST_F(CapturePipelineTest, TheDeliveryIsChosenWhenItHappens) {
    select();
    desktop.user.wait(319ms);
    desktop.preferences.store(kTerminalModeEnabled, true);
    desktop.user.wait(1ms);
    EXPECT_EQ(terminalPictures.size(), 1U);
}

TEST_F(CapturePipelineTest, WithoutATargetItSaysSoAndLeavesThePictureOnThePasteboard) {
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), ElementsAre(kNoTarget));
    EXPECT_THAT(desktop.journal.timesOf<effect::AlertShown>(), ElementsAre(320ms));
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPicture));
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
}

TEST_F(CapturePipelineTest, ATargetThatDoesNotComeIsSaidAndLeavesThePictureOnThePasteboard) {
    startClaude();
    desktop.workspace.program(claude)->refusesActivation = true;
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), ElementsAre(kNotInFront));
    EXPECT_THAT(desktop.journal.timesOf<effect::AlertShown>(), ElementsAre(2320ms));
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPicture));
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 1U);
}

TEST_F(CapturePipelineTest, APasteboardThatRefusesThePictureStopsNothing) {
    startClaude();
    desktop.faults.failOnce(Operation::writePicture);
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 2U);
}

TEST_F(CapturePipelineTest, ACancelSaysNothingAndTheNextTriggerWorksAtOnce) {
    startClaude();
    owner->pipeline->triggerCapture();
    desktop.user.pressKey(53);
    desktop.queue.drain();
    EXPECT_FALSE(owner->manager->isCapturing());
    EXPECT_EQ(desktop.queue.now(), 0ms);
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::PictureWritten>(), 1U);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 2U);
}

TEST_F(CapturePipelineTest, ACancelTouchesNothing) {
    startClaude();
    owner->pipeline->triggerCapture();
    desktop.user.rightClick({10, 10});
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 0U);
}

TEST_F(CapturePipelineTest, ASecondTriggerDuringTheOverlayIsDroppedWithoutAWord) {
    startClaude();
    owner->pipeline->triggerCapture();
    select();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    EXPECT_EQ(desktop.journal.count<effect::PictureWritten>(), 1U);
}

TEST_F(CapturePipelineTest, AnUnlistedDisplaySystemIsSaidInItsOwnWords) {
    desktop.faults.failOnce(Operation::listDisplays);
    EXPECT_EQ(alertAfterFailure(), "Screen capture failed: The displays could not be listed.");
}

TEST_F(CapturePipelineTest, AFailedCaptureIsSaidInTheSystemsWords) {
    desktop.faults.failOnce(Operation::captureDisplay);
    EXPECT_EQ(alertAfterFailure(), "Screen capture failed: The display could not be captured.");
    EXPECT_THAT(desktop.journal.timesOf<effect::AlertShown>(), ElementsAre(20ms));
}

TEST_F(CapturePipelineTest, AScreenWithoutItsDisplayIsSaid) {
    desktop.screens.detachAll();
    desktop.screens.attach({1, {0, 0, 1440, 900}, 2, false});
    EXPECT_EQ(alertAfterFailure(), "Could not find the target display.");
}

TEST_F(CapturePipelineTest, ADisplayUnpluggedDuringTheSelectionIsSaid) {
    desktop.queue.post([this] { desktop.screens.detachAll(); });
    EXPECT_EQ(alertAfterFailure(), "Could not find the target display.");
}

TEST_F(CapturePipelineTest, ASelectionWithoutPixelsIsSaid) {
    owner->pipeline->triggerCapture();
    desktop.user.drag({100, -300}, {200, -100}); // starts outside: on no overlay
    EXPECT_TRUE(owner->manager->isCapturing());
    desktop.user.mouseDown({1440, 0});
    desktop.user.movePointer({1500, -100});
    desktop.user.mouseUp({1500, -100});
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), ElementsAre("Failed to crop the captured image."));
}

TEST_F(CapturePipelineTest, EveryAlertActivatesTheProgramFirst) {
    desktop.application.setSelfActivation(SelfActivation::changesNothing);
    select();
    desktop.user.wait(1min);
    auto const shown = only<effect::ActivationAsked, effect::AlertShown>(desktop.journal);
    ASSERT_EQ(shown.size(), 3U); // the overlay's own activation comes first
    EXPECT_EQ(shown.at(1).effect, Effect(effect::ActivationAsked{false}));
}

TEST_F(CapturePipelineTest, ACaptureCanStartAndEndOverAnAlert) {
    desktop.alerts.setReadingTime(10s);
    select();
    desktop.user.wait(400ms); // the alert is up: nothing to paste into
    desktop.queue.after(1s, [this] { owner->pipeline->triggerCapture(); });
    desktop.queue.after(2s, [this] { desktop.user.pressKey(53); });
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 2U);
    EXPECT_EQ(desktop.cursors.depth(), 0);
    EXPECT_FALSE(owner->manager->isCapturing());
}

TEST_F(CapturePipelineTest, ANewCaptureMayStartWhileADeliveryStillWaits) {
    startClaude();
    desktop.workspace.program(claude)->activationDelay = 1500ms;
    select();
    desktop.user.wait(1s);
    select();
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::PictureWritten>(), 2U);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 4U);
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(CapturePipelineTest, ATargetThatEndsBeforeThePasteGetsNoClickButTheKeysAreSent) {
    startClaude();
    select();
    desktop.user.wait(500ms);
    desktop.workspace.quit(claude);
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::MousePosted>(), 0U);
    EXPECT_THAT(desktop.journal.timesOf<effect::KeyPosted>(), ElementsAre(1220ms, 1220ms));
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPicture));
}

TEST_F(CapturePipelineTest, WithoutTheGrantOnTheWayTheEventsAreSentAndDropped) {
    startClaude();
    select();
    desktop.permissions.revoke(Permission::accessibility);
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 2U);
    EXPECT_EQ(desktop.journal.count<effect::EventDropped>(), 2U);
    EXPECT_THAT(alerts(), IsEmpty());
}

/// The owner is let go of at a moment of the road; what was begun before decides what still comes.
class CapturePipelineOwnerTest : public CapturePipelineTest,
                                 public testing::WithParamInterface<int> {};

TEST_P(CapturePipelineOwnerTest, GoneAtAMomentItsWeakStepsEndInSilence) {
    auto const gone = std::chrono::milliseconds(GetParam());
    startClaude();
    std::weak_ptr<Owner> const weak = owner;
    desktop.queue.after(gone, [this] { owner.reset(); });
    select();
    desktop.user.wait(319ms);
    // From the picture on, the owner lives until the delivery; from the paste on, the keys come.
    EXPECT_EQ(weak.expired(), gone < 20ms);
    desktop.user.wait(1ms);
    EXPECT_EQ(weak.expired(), gone < 320ms);
    desktop.user.wait(1min);
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(desktop.journal.count<effect::PictureWritten>(), gone >= 20ms ? 1U : 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), gone >= 20ms ? 1U : 0U);
    EXPECT_EQ(desktop.journal.count<effect::MousePosted>(), gone >= 920ms ? 2U : 0U);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), gone >= 920ms ? 2U : 0U);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.capturer.openSessions(), 0);
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionEnded>(), 1U);
    EXPECT_EQ(desktop.cursors.depth(), 0);
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

// Before the tear-down's turn, while the picture is taken, between picture and delivery, between
// the checks, between the last check and the paste, between the paste's steps.
INSTANTIATE_TEST_SUITE_P(EachMoment, CapturePipelineOwnerTest,
                         testing::Values(0, 10, 21, 200, 319, 321, 380, 430, 919, 921, 1300));

TEST_F(CapturePipelineTest, WithTheOwnerGoneDuringTheOverlayNothingIsLeftOnTheScreen) {
    owner->pipeline->triggerCapture();
    owner.reset();
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    EXPECT_EQ(desktop.capturer.openSessions(), 0);
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
    EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
}

TEST_F(CapturePipelineTest, WithTheOwnerGoneAFailureIsNotReported) {
    desktop.faults.failOnce(Operation::captureDisplay);
    select();
    desktop.queue.drain();
    owner.reset();
    desktop.user.wait(1min);
    EXPECT_THAT(alerts(), IsEmpty());
}

} // namespace
} // namespace trovel
