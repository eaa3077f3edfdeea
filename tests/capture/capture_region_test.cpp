#include "capture/capture_region.h"

#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/simulated_pixels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace trovel {
namespace {

using testing::ElementsAre;

class CaptureRegionTest : public testing::Test {
protected:
    CaptureRegionTest() { desktop.worker.setLatency({}); }

    CaptureResult capture(Rect rect, Screen const& screen) {
        CaptureResult result = std::unexpected(CaptureError{});
        desktop.worker.run([&] { result = captureRegion(desktop.capturer, rect, screen); });
        desktop.queue.drain();
        return result;
    }
    Screen attach(SimulatedDisplay display) {
        desktop.screens.detachAll();
        desktop.screens.attach(display);
        return desktop.screens.screens().front();
    }
    static SimulatedPixels const& pixels(CaptureResult const& result) {
        return dynamic_cast<SimulatedPixels const&>(*result->pixels);
    }
    static CaptureError errorOf(CaptureResult const& result) {
        return result ? CaptureError{} : result.error();
    }

    SimulatedDesktop desktop;
};

TEST_F(CaptureRegionTest, GivesEveryPixelAndASizeInPoints) {
    auto const screen = attach({5, {0, 0, 1440, 900}, 2});
    auto const result = capture({100, 150, 300, 200}, screen);
    ASSERT_TRUE(result);
    EXPECT_EQ(pixels(result).displayId(), 5U);
    EXPECT_EQ(pixels(result).region(), (PixelRect{200, 1100, 600, 400}));
    EXPECT_EQ(result->size, (Size{300, 200}));
    EXPECT_EQ(pixels(result).colorAt(0, 0), desktopColor(5, 200, 1100));
    EXPECT_EQ(pixels(result).colorAt(599, 399), desktopColor(5, 799, 1499));
}

TEST_F(CaptureRegionTest, AsksForTheWholeDisplayInPixelsUnscaledAndWithoutThePointer) {
    auto const screen = attach({5, {0, 0, 1440, 900}, 2});
    desktop.capturer.setPointer({110, 160});
    auto const result = capture({100, 150, 300, 200}, screen);
    ASSERT_TRUE(result);
    EXPECT_TRUE(pixels(result).isClean());
    EXPECT_THAT(desktop.journal.all<effect::DisplayCaptured>(),
                ElementsAre(effect::DisplayCaptured{{5, 1440, 900}, {2880, 1800, false, false}}));
}

TEST_F(CaptureRegionTest, DropsTheFractionOfTheDisplaysSizeInPixels) {
    auto const screen = attach({5, {0, 0, 1001, 501}, 1.25});
    static_cast<void>(capture({0, 0, 100, 100}, screen));
    auto const configuration = desktop.journal.all<effect::DisplayCaptured>().at(0).configuration;
    EXPECT_EQ(configuration.width, 1251);
    EXPECT_EQ(configuration.height, 626);
}

TEST_F(CaptureRegionTest, EveryWholePixelOfAFractionalScaleComesBack) {
    for (double const scale : {1.25, 1.5, 1.75}) {
        for (int const width : {61, 115, 1080, 1920, 3840}) {
            auto const screen = attach({5, {0, 0, width / scale, 1080 / scale}, scale});
            auto const result = capture(screen.frame, screen);
            ASSERT_TRUE(result);
            EXPECT_EQ(pixels(result).region(), (PixelRect{0, 0, width, 1080})) << scale;
        }
    }
}

TEST_F(CaptureRegionTest, RoundsAFractionalSelectionOutwardToWholePixels) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 1});
    auto const result = capture({10.5, 20.5, 100, 50}, screen);
    ASSERT_TRUE(result);
    EXPECT_EQ(pixels(result).region(), (PixelRect{10, 729, 101, 51}));
    EXPECT_EQ(result->size, (Size{101, 51}));
}

TEST_F(CaptureRegionTest, CutsASelectionAtTheScreensEdges) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 2});
    auto const result = capture({900, -100, 300, 200}, screen);
    ASSERT_TRUE(result);
    EXPECT_EQ(pixels(result).region(), (PixelRect{1800, 1400, 200, 200}));
    EXPECT_EQ(result->size, (Size{100, 100}));
}

TEST_F(CaptureRegionTest, OnAScreenLeftOfAndBelowThePrimaryOneTheRightPixelsAreCut) {
    desktop.screens.attach({9, {-1280, -300, 1280, 1024}, 1});
    auto const screen = desktop.screens.screens().back();
    auto const result = capture({-1270, -280, 100, 50}, screen);
    ASSERT_TRUE(result);
    EXPECT_EQ(pixels(result).displayId(), 9U);
    EXPECT_EQ(pixels(result).region(), (PixelRect{10, 954, 100, 50}));
}

TEST_F(CaptureRegionTest, ASelectionOutsideTheScreenCannotBeCropped) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 2});
    for (Rect const outside : {Rect{1100, 100, 50, 50}, Rect{100, -100, 50, 50}}) {
        EXPECT_EQ(errorOf(capture(outside, screen)).kind, CaptureError::Kind::cropFailed);
    }
    EXPECT_EQ(errorOf(capture({100, 100, 0, 50}, screen)).kind, CaptureError::Kind::cropFailed);
}

TEST_F(CaptureRegionTest, TheSystemsErrorsKeepTheirWords) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 2});
    desktop.faults.failOnce(Operation::listDisplays);
    EXPECT_EQ(errorOf(capture({0, 0, 50, 50}, screen)),
              (CaptureError{CaptureError::Kind::sckFailed, "The displays could not be listed."}));
    EXPECT_EQ(desktop.journal.count<effect::DisplayCaptured>(), 0U);
    desktop.faults.failOnce(Operation::captureDisplay);
    EXPECT_EQ(errorOf(capture({0, 0, 50, 50}, screen)),
              (CaptureError{CaptureError::Kind::sckFailed, "The display could not be captured."}));
}

TEST_F(CaptureRegionTest, AScreenThatIsGoneHasNoDisplay) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 2});
    attach({6, {0, 0, 1000, 800}, 2});
    EXPECT_EQ(errorOf(capture({0, 0, 50, 50}, screen)),
              (CaptureError{CaptureError::Kind::noMatchingDisplay, ""}));
    desktop.screens.detachAll();
    EXPECT_EQ(errorOf(capture({0, 0, 50, 50}, screen)).kind, CaptureError::Kind::noMatchingDisplay);
}

TEST_F(CaptureRegionTest, ADisplayAttachedSinceTheLastCaptureIsSeen) {
    static_cast<void>(capture({0, 0, 50, 50}, desktop.screens.screens().front()));
    desktop.screens.attach({9, {1440, 0, 800, 600}, 1});
    auto const result = capture({1450, 10, 50, 50}, desktop.screens.screens().back());
    ASSERT_TRUE(result);
    EXPECT_EQ(pixels(result).displayId(), 9U);
}

TEST_F(CaptureRegionTest, AScreenWithoutANumberHasNoDisplay) {
    auto const screen = attach({5, {0, 0, 1000, 800}, 2, false});
    EXPECT_EQ(errorOf(capture({0, 0, 50, 50}, screen)).kind, CaptureError::Kind::noMatchingDisplay);
}

TEST_F(CaptureRegionTest, OfSeveralDisplaysTheFirstWithTheScreensNumberIsTaken) {
    desktop.screens.attach({7, {1440, 0, 800, 600}, 1});
    desktop.screens.attach({7, {2240, 0, 1024, 768}, 1});
    static_cast<void>(capture({1500, 100, 50, 50}, desktop.screens.screens().at(1)));
    auto const display = desktop.journal.all<effect::DisplayCaptured>().at(0).display;
    EXPECT_EQ(display, (CaptureDisplay{7, 800, 600}));
}

TEST(DisplayMatches, ComparesNumbersAndNeedsOne) {
    EXPECT_TRUE(displayMatches({4, 1, 1}, {{}, 1, 4}));
    EXPECT_FALSE(displayMatches({4, 1, 1}, {{}, 1, 5}));
    EXPECT_FALSE(displayMatches({0, 1, 1}, {{}, 1, std::nullopt}));
}

} // namespace
} // namespace trovel
