#include "capture/screenshot_manager.h"

#include "capture/region_selection_controller.h"
#include "platform/simulated/simulated_pixels.h"
#include "tests/support/desktop_test.h"
#include "tests/support/lifetime.h"

#include <memory>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ScreenshotManagerTest : public DesktopTest {
protected:
    void start() {
        manager->startCapture([this](CaptureResult const& result) {
            results.push_back(result);
            times.push_back(desktop.queue.now());
            wasCapturing.push_back(manager && manager->isCapturing());
            openSessions.push_back(desktop.capturer.openSessions());
        });
    }
    void select() { desktop.user.drag({100, 150}, {400, 350}); }
    void endsCancelled() {
        ASSERT_THAT(results, SizeIs(1));
        ASSERT_FALSE(results.front());
        EXPECT_EQ(results.front().error(), (CaptureError{CaptureError::Kind::cancelled, ""}));
    }

    std::shared_ptr<ScreenshotManager> manager = newShared<ScreenshotManager>(platform);
    std::vector<CaptureResult> results;
    std::vector<MainQueue::Duration> times;
    std::vector<bool> wasCapturing;
    std::vector<int> openSessions;
};

TEST_F(ScreenshotManagerTest, IsIdleAtFirst) {
    EXPECT_FALSE(manager->isCapturing());
    EXPECT_EQ(manager->selectionController(), nullptr);
}

TEST_F(ScreenshotManagerTest, IsCapturingFromTheSelectionToTheResult) {
    start();
    EXPECT_TRUE(manager->isCapturing());
    EXPECT_NE(manager->selectionController(), nullptr);
    desktop.user.wait(5s);
    select();
    desktop.queue.drain();
    EXPECT_EQ(manager->selectionController(), nullptr);
    EXPECT_TRUE(manager->isCapturing());
    desktop.user.wait(19ms);
    EXPECT_TRUE(manager->isCapturing());
    EXPECT_THAT(results, IsEmpty());
    desktop.user.wait(1ms);
    EXPECT_FALSE(manager->isCapturing());
    EXPECT_THAT(times, ElementsAre(5020ms));
    EXPECT_THAT(wasCapturing, ElementsAre(false));
    ASSERT_TRUE(results.front());
    EXPECT_EQ(pictureOf(*results.front()), (Picture{1, {200, 1100, 600, 400}, {300, 200}}));
}

TEST_F(ScreenshotManagerTest, TheOverlayIsNotInThePicture) {
    start();
    select();
    desktop.user.wait(1s);
    ASSERT_TRUE(results.at(0));
    EXPECT_TRUE(dynamic_cast<SimulatedPixels const&>(*results.front()->pixels).isClean());
}

TEST_F(ScreenshotManagerTest, ASecondStartDuringACaptureIsDroppedForGood) {
    start();
    start();
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    select();
    desktop.queue.drain();
    start(); // while the worker takes the picture
    desktop.user.wait(1min);
    EXPECT_THAT(results, SizeIs(1));
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionBegan>(), 1U);
}

TEST_F(ScreenshotManagerTest, ACancelIsReportedAtOnceAndNothingIsCaptured) {
    start();
    desktop.user.wait(1s);
    desktop.user.pressKey(53);
    EXPECT_TRUE(manager->isCapturing());
    desktop.queue.drain();
    endsCancelled();
    EXPECT_THAT(times, ElementsAre(1s));
    EXPECT_THAT(wasCapturing, ElementsAre(false));
    EXPECT_EQ(manager->selectionController(), nullptr);
    EXPECT_EQ(desktop.journal.count<effect::DisplaysListed>(), 0U);
}

TEST_F(ScreenshotManagerTest, AFailureIsReportedAndFreesTheNextCapture) {
    desktop.faults.failOnce(Operation::captureDisplay);
    start();
    select();
    desktop.user.wait(1s);
    ASSERT_THAT(results, SizeIs(1));
    ASSERT_FALSE(results.front());
    EXPECT_EQ(results.front().error().kind, CaptureError::Kind::sckFailed);
    start();
    select();
    desktop.user.wait(1s);
    ASSERT_THAT(results, SizeIs(2));
    EXPECT_TRUE(results.back());
}

TEST_F(ScreenshotManagerTest, ANextCaptureCanStartWhileTheResultIsReported) {
    int rounds = 0;
    std::function<void(CaptureResult const&)> again = [&](CaptureResult const&) {
        if (++rounds < 3) manager->startCapture(again);
    };
    manager->startCapture(again);
    for (int round = 0; round < 3; ++round) {
        select();
        desktop.user.wait(1s);
    }
    EXPECT_EQ(rounds, 3);
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionBegan>(), 3U);
    EXPECT_EQ(desktop.capturer.openSessions(), 0);
}

TEST_F(ScreenshotManagerTest, TheCapturersSessionBeginsBeforeTheOverlayAndEndsBeforeTheReport) {
    start();
    auto const began = effectsOf(desktop.journal);
    EXPECT_EQ(began.front(), Effect(effect::CaptureSessionBegan{}));
    EXPECT_EQ(desktop.capturer.openSessions(), 1);
    select();
    desktop.user.wait(19ms);
    EXPECT_EQ(desktop.capturer.openSessions(), 1);
    desktop.user.wait(1ms);
    EXPECT_THAT(openSessions, ElementsAre(0));
    start();
    EXPECT_EQ(desktop.capturer.openSessions(), 1);
    desktop.user.pressKey(53);
    desktop.queue.drain();
    EXPECT_THAT(openSessions, ElementsAre(0, 0));
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionBegan>(), 2U);
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionEnded>(), 2U);
}

TEST_F(ScreenshotManagerTest, GoneWhileTheOverlayIsUpItTakesTheOverlayAndTheSessionAlong) {
    start();
    manager.reset();
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    EXPECT_EQ(desktop.capturer.openSessions(), 0);
    desktop.user.wait(1min);
    EXPECT_THAT(results, IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionEnded>(), 1U);
}

TEST_F(ScreenshotManagerTest, GoneBetweenTheSelectionAndItsReportTheResultIsACancel) {
    start();
    select();
    manager.reset();
    desktop.user.wait(1min);
    endsCancelled();
    EXPECT_EQ(desktop.journal.count<effect::DisplaysListed>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionEnded>(), 1U);
}

TEST_F(ScreenshotManagerTest, GoneWhileThePictureIsTakenTheResultIsReportedAllTheSame) {
    start();
    select();
    desktop.queue.drain();
    std::weak_ptr<ScreenshotManager> const weak = manager;
    manager.reset();
    EXPECT_TRUE(weak.expired()); // the worker does not own it
    desktop.user.wait(1min);
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_TRUE(results.front());
    EXPECT_EQ(desktop.journal.count<effect::CaptureSessionEnded>(), 1U);
}

} // namespace
} // namespace trovel
