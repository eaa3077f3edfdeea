#include "platform/linux/x11/root_pixels.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

Monitor monitor(PixelRect area, double scale) {
    return {1, "", area, scale};
}

TEST(RootPixelsTest, ThePrimaryScreenStandsAtTheOrigin) {
    auto const primary = monitor({1920, 300, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(primary, primary), (Rect{0, 0, 1920, 1080}));
}

TEST(RootPixelsTest, ScreensOfOneScaleJoinWithoutGaps) {
    auto const primary = monitor({3840, 0, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(monitor({0, 0, 3840, 2160}, 2), primary), (Rect{-1920, 0, 1920, 1080}));
    EXPECT_EQ(frameOf(monitor({7680, 0, 3840, 2160}, 2), primary), (Rect{1920, 0, 1920, 1080}));
    EXPECT_EQ(frameOf(monitor({3840, 2160, 3840, 1200}, 2), primary), (Rect{0, -600, 1920, 600}));
}

TEST(RootPixelsTest, AScreenAboveThePrimaryOneStartsWhereThatEnds) {
    auto const primary = monitor({0, 1200, 1920, 1080}, 1);
    EXPECT_EQ(frameOf(monitor({100, 0, 1600, 1200}, 1), primary), (Rect{100, 1080, 1600, 1200}));
}

TEST(RootPixelsTest, ScreensOfDifferentScaleNeverShareAFrame) {
    auto const primary = monitor({0, 0, 1920, 1080}, 1);
    auto const second = monitor({1920, 0, 1920, 1080}, 1);
    auto const third = monitor({3840, -1080, 3840, 2160}, 2);
    EXPECT_EQ(frameOf(third, primary), (Rect{3840, 0, 1920, 1080}));
    EXPECT_NE(frameOf(third, primary), frameOf(second, primary));
}

TEST(RootPixelsTest, YGrowsUpwardFromTheMonitorsLowerLeftCorner) {
    auto const screen = monitor({1000, 500, 800, 600}, 2);
    EXPECT_EQ(pointInMonitor(screen, 1000, 500), (Point{0, 300}));
    EXPECT_EQ(pointInMonitor(screen, 1200, 700), (Point{100, 200}));
}

TEST(RootPixelsTest, TheLastPixelIsTheFarEdge) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        auto const screen = monitor({0, 0, 1920, 1080}, scale);
        auto const last = pointInMonitor(screen, 1919, 1079);
        EXPECT_EQ(last, (Point{1920 / scale, 0}));
        auto const beforeLast = pointInMonitor(screen, 1918, 1078);
        EXPECT_EQ(beforeLast, (Point{1918 / scale, 2 / scale}));
    }
}

TEST(RootPixelsTest, APointerOutsideTheMonitorGoesOnCounting) {
    auto const screen = monitor({0, 0, 1000, 1000}, 2);
    EXPECT_EQ(pointInMonitor(screen, 1200, -100), (Point{600, 550}));
    EXPECT_EQ(pointInMonitor(screen, -10, 1100), (Point{-5, -50}));
}

} // namespace
} // namespace trovel
