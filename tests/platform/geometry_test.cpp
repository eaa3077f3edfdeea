#include "platform/geometry.h"

#include <gtest/gtest.h>

namespace trovel {

static void PrintTo(PixelRect const& rect, std::ostream* stream) {
    *stream << rect.x << ',' << rect.y << ' ' << rect.width << 'x' << rect.height;
}

namespace {

TEST(Rect, KnowsItsEdgesAndItsMiddle) {
    constexpr Rect kRect{-10, 20, 30, 40};
    EXPECT_EQ(kRect.minX(), -10);
    EXPECT_EQ(kRect.maxX(), 20);
    EXPECT_EQ(kRect.midX(), 5);
    EXPECT_EQ(kRect.minY(), 20);
    EXPECT_EQ(kRect.maxY(), 60);
    EXPECT_EQ(kRect.midY(), 40);
}

TEST(Rect, AnInsetMovesEverySideInward) {
    EXPECT_EQ((Rect{0, 0, 10, 20}.insetBy(0.5)), (Rect{0.5, 0.5, 9, 19}));
    EXPECT_EQ((Rect{5, 5, 10, 20}.insetBy(-1)), (Rect{4, 4, 12, 22}));
}

TEST(OutwardPixelRect, LeavesWholePixelsAsTheyAre) {
    EXPECT_EQ(outwardPixelRect({3, 4, 5, 6}), (PixelRect{3, 4, 5, 6}));
    EXPECT_EQ(outwardPixelRect({-3, -4, 5, 6}), (PixelRect{-3, -4, 5, 6}));
}

TEST(OutwardPixelRect, RoundsTheOriginDownAndTheFarEdgeUp) {
    EXPECT_EQ(outwardPixelRect({3.25, 4.75, 5, 6}), (PixelRect{3, 4, 6, 7}));
    EXPECT_EQ(outwardPixelRect({-0.5, -0.5, 1, 1}), (PixelRect{-1, -1, 2, 2}));
    EXPECT_EQ(outwardPixelRect({3.001, 4, 0.5, 0.999}), (PixelRect{3, 4, 1, 1}));
}

TEST(OutwardPixelRect, TakesPointsThatCameFromPixelsBackToThosePixels) {
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0, 1.1, 3.0}) {
        for (std::int64_t first = -50; first < 200; first += 7) {
            PixelRect const pixels{first, first + 3, 101, 1080};
            Rect const points{static_cast<double>(pixels.x) / scale,
                              static_cast<double>(pixels.y) / scale,
                              static_cast<double>(pixels.width) / scale,
                              static_cast<double>(pixels.height) / scale};
            Rect const again{points.x * scale, points.y * scale, points.width * scale,
                             points.height * scale};
            EXPECT_EQ(outwardPixelRect(again), pixels) << scale;
        }
    }
}

TEST(PixelRect, IsEmptyWithoutWidthOrHeight) {
    EXPECT_TRUE((PixelRect{1, 1, 0, 5}.isEmpty()));
    EXPECT_TRUE((PixelRect{1, 1, 5, 0}.isEmpty()));
    EXPECT_TRUE((PixelRect{1, 1, -1, 5}.isEmpty()));
    EXPECT_FALSE((PixelRect{1, 1, 1, 1}.isEmpty()));
}

} // namespace
} // namespace trovel
