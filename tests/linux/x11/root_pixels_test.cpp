#include "platform/linux/x11/root_pixels.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

Monitor monitor(PixelRect area, double scale) {
    return {1, "", area, scale};
}

TEST(ConvertTest, PointsGiveTheirPixelsBackWhateverTheScale) {
    for (double const scale : {1.0, 1.1, 1.25, 1.3, 1.5, 1.6, 1.75, 2.0, 2.25, 3.0}) {
        for (std::int64_t pixels = 1; pixels <= 8192; ++pixels) {
            auto const back = pointsFromPixels(pixels, scale) * scale;
            ASSERT_EQ(static_cast<std::int64_t>(back), pixels) << "at scale " << scale;
        }
    }
}

TEST(ConvertTest, ThePrimaryScreenStandsAtTheOrigin) {
    auto const primary = monitor({1920, 300, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(primary, primary), (Rect{0, 0, 1920, 1080}));
}

TEST(ConvertTest, ScreensOfOneScaleJoinWithoutGaps) {
    auto const primary = monitor({3840, 0, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(monitor({0, 0, 3840, 2160}, 2), primary), (Rect{-1920, 0, 1920, 1080}));
    EXPECT_EQ(frameOf(monitor({7680, 0, 3840, 2160}, 2), primary), (Rect{1920, 0, 1920, 1080}));
    EXPECT_EQ(frameOf(monitor({3840, 2160, 3840, 1200}, 2), primary), (Rect{0, -600, 1920, 600}));
}

TEST(ConvertTest, AScreenAboveThePrimaryOneStartsWhereThatEnds) {
    auto const primary = monitor({0, 1200, 1920, 1080}, 1);
    EXPECT_EQ(frameOf(monitor({100, 0, 1600, 1200}, 1), primary), (Rect{100, 1080, 1600, 1200}));
}

TEST(ConvertTest, ScreensOfDifferentScaleNeverShareAFrame) {
    auto const primary = monitor({0, 0, 1920, 1080}, 1);
    auto const second = monitor({1920, 0, 1920, 1080}, 1);
    auto const third = monitor({3840, -1080, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(third, primary), (Rect{3840, 0, 1920, 1080}));
    EXPECT_NE(frameOf(third, primary), frameOf(second, primary));
}

TEST(ConvertTest, YGrowsUpwardFromTheMonitorsLowerLeftCorner) {
    auto const screen = monitor({1000, 500, 800, 600}, 2);
    EXPECT_EQ(pointInMonitor(screen, 1000, 500), (Point{0, 300}));
    EXPECT_EQ(pointInMonitor(screen, 1200, 700), (Point{100, 200}));
}

TEST(ConvertTest, TheLastPixelIsTheFarEdge) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        auto const screen = monitor({0, 0, 1920, 1080}, scale);
        auto const last = pointInMonitor(screen, 1919, 1079);
        EXPECT_EQ(last, (Point{1920 / scale, 0}));
        auto const beforeLast = pointInMonitor(screen, 1918, 1078);
        EXPECT_EQ(beforeLast, (Point{1918 / scale, 2 / scale}));
    }
}

TEST(ConvertTest, APointerOutsideTheMonitorGoesOnCounting) {
    auto const screen = monitor({0, 0, 1000, 1000}, 2);
    EXPECT_EQ(pointInMonitor(screen, 1200, -100), (Point{600, 550}));
    EXPECT_EQ(pointInMonitor(screen, -10, 1100), (Point{-5, -50}));
}

TEST(ConvertTest, EdgesOnACanvasGoToTheNearestPixel) {
    EXPECT_EQ(nearestPixelRect({10, 20, 30, 40}, 2, 1000), (PixelRect{20, 880, 60, 80}));
    EXPECT_EQ(nearestPixelRect({0.4, 0.4, 10.2, 10.2}, 1, 100), (PixelRect{0, 89, 11, 11}));
    EXPECT_EQ(nearestPixelRect({100 / 1.75, 100 / 1.75, 7 / 1.75, 9 / 1.75}, 1.75, 1080),
              (PixelRect{100, 971, 7, 9}));
}

TEST(ConvertTest, WhatLiesFarOutsideStaysARectangle) {
    auto const far = nearestPixelRect({-1e300, -1e300, 2e300, 2e300}, 2, 1000);
    EXPECT_GT(far.width, 1000);
    EXPECT_GT(far.height, 1000);
    EXPECT_LT(far.x, 0);
    EXPECT_LT(far.y, 0);
}

} // namespace
} // namespace trovel
