#include "platform/image.h"
#include "platform/main_queue.h"
#include "platform/screen_capturer.h"
#include "platform/screens.h"
#include "platform/worker.h"
#include "tests/macos/run/mac_test.h"

#include <cerrno>
#include <cstring>
#include <optional>

namespace trovel {
namespace {

using namespace std::chrono_literals;

class CaptureMac : public MacTest {
protected:
    using Picture = ScreenCapturer::Result<std::shared_ptr<PixelImage const>>;

    /// What the capture of a whole display gives, whenever it does.
    void capture() {
        result.reset();
        platform.worker.run([this] {
            auto picture = captureNow();
            platform.mainQueue.post([this, picture] { result = picture; });
        });
    }
    Picture captureNow() {
        auto const displays = platform.capturer.shareableDisplays();
        if (!displays) return std::unexpected(displays.error());
        if (displays->empty()) return std::unexpected("no display");
        return platform.capturer.captureImage(displays->front(), {100, 50, false, false});
    }

    std::optional<Picture> result;
};

TEST_F(CaptureMac, APictureComesBackInTheSizeThatWasAskedFor) {
    capture();
    EXPECT_FALSE(result);
    session.wait(1s);
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((**result)->widthPixels(), 100);
    EXPECT_EQ((**result)->heightPixels(), 50);
}

TEST_F(CaptureMac, AServiceThatNeverAnswersIsATimeOutAfterTwoMinutesAndTheNextCaptureWorks) {
    mac().captureService.neverAnswers = true;
    capture();
    session.wait(119s);
    EXPECT_FALSE(result);
    session.wait(2s);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), std::strerror(ETIMEDOUT));
    mac().captureService.neverAnswers = false;
    capture();
    session.wait(1s);
    EXPECT_TRUE(result && *result);
}

TEST_F(CaptureMac, AnAnswerThatComesTooLateIsDropped) {
    mac().captureService.delay = 125s;
    capture();
    session.wait(10min);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), std::strerror(ETIMEDOUT));
}

TEST_F(CaptureMac, WhatTheSystemSaysOfAFailureIsPassedOn) {
    mac().captureService.error = "The display is asleep.";
    capture();
    session.wait(1s);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), "The display is asleep.");
    mac().captureService.error.clear();
    mac().mayRecordScreen = false;
    capture();
    session.wait(1s);
    EXPECT_EQ(result->error(), "The user declined TCCs");
}

TEST_F(CaptureMac, NeitherAPictureNorAnErrorIsAFailureWithoutText) {
    mac().captureService.hasPicture = false;
    capture();
    session.wait(1s);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), "");
}

TEST_F(CaptureMac, WithoutDisplaysThereIsNothingToCapture) {
    mac().displays.clear();
    capture();
    session.wait(1s);
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error(), "no display");
    EXPECT_TRUE(platform.screens.screens().empty());
    mac().displays = {{1, NSMakeRect(0, 0, 1440, 900), 2}};
}

TEST_F(CaptureMac, EveryScreenSaysWhereItIsAndWhichDisplayItShows) {
    mac().displays.push_back({7, NSMakeRect(-1920, 100, 1920, 1080), 1});
    auto const screens = platform.screens.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[1].frame, (Rect{-1920, 100, 1920, 1080}));
    EXPECT_EQ(screens[1].backingScaleFactor, 1);
    EXPECT_EQ(screens[1].screenNumber, 7U);
    EXPECT_EQ(screens[0].backingScaleFactor, 2);
}

} // namespace
} // namespace trovel
