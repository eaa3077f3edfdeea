#include "platform/linux/pictures/device_pixels.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

TEST(DevicePixelsTest, PointsGiveTheirPixelsBackWhateverTheScale) {
    for (double const scale : {1.0, 1.1, 1.25, 1.3, 1.5, 1.6, 1.75, 2.0, 2.25, 3.0}) {
        for (std::int64_t pixels = 1; pixels <= 8192; ++pixels) {
            auto const back = pointsFromPixels(pixels, scale) * scale;
            ASSERT_EQ(static_cast<std::int64_t>(back), pixels) << "at scale " << scale;
        }
    }
}

TEST(DevicePixelsTest, EdgesOnACanvasGoToTheNearestPixel) {
    EXPECT_EQ(nearestPixelRect({10, 20, 30, 40}, 2, 1000), (PixelRect{20, 880, 60, 80}));
    EXPECT_EQ(nearestPixelRect({0.4, 0.4, 10.2, 10.2}, 1, 100), (PixelRect{0, 89, 11, 11}));
    EXPECT_EQ(nearestPixelRect({100 / 1.75, 100 / 1.75, 7 / 1.75, 9 / 1.75}, 1.75, 1080),
              (PixelRect{100, 971, 7, 9}));
}

TEST(DevicePixelsTest, WhatLiesFarOutsideStaysARectangle) {
    auto const far = nearestPixelRect({-1e300, -1e300, 2e300, 2e300}, 2, 1000);
    EXPECT_GT(far.width, 1000);
    EXPECT_GT(far.height, 1000);
    EXPECT_LT(far.x, 0);
    EXPECT_LT(far.y, 0);
}

} // namespace
} // namespace trovel
