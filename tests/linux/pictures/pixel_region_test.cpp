#include "platform/linux/pictures/pixel_region.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bitset>
#include <random>

namespace trovel {
namespace {

constexpr int kSide = 24;
using Pixels = std::bitset<kSide * kSide>;

Pixels pixelsOf(PixelRect const& rect) {
    Pixels pixels;
    for (auto y = rect.y; y < rect.y + rect.height; ++y) {
        for (auto x = rect.x; x < rect.x + rect.width; ++x) {
            pixels.set(static_cast<std::size_t>(y * kSide + x));
        }
    }
    return pixels;
}

/// The pixels of a region, which must not name any of them twice.
Pixels pixelsOf(PixelRegion const& region) {
    Pixels pixels;
    for (auto const& rect : region.rects()) {
        auto const part = pixelsOf(rect);
        EXPECT_TRUE((pixels & part).none()) << "two rectangles overlap";
        EXPECT_FALSE(rect.isEmpty());
        pixels |= part;
    }
    return pixels;
}

class RandomRects {
public:
    PixelRect next() {
        std::uniform_int_distribution<std::int64_t> place(0, kSide);
        auto const x = place(engine_);
        auto const y = place(engine_);
        return {x, y, std::uniform_int_distribution<std::int64_t>(0, kSide - x)(engine_),
                std::uniform_int_distribution<std::int64_t>(0, kSide - y)(engine_)};
    }

private:
    std::mt19937 engine_{7};
};

TEST(PixelRegionTest, AddsAndTakesAwayLikeASetOfPixels) {
    RandomRects rects;
    for (int round = 0; round < 300; ++round) {
        PixelRegion region;
        Pixels expected;
        for (int step = 0; step < 8; ++step) {
            auto const rect = rects.next();
            if (step % 3 == 2) {
                region.subtract(rect);
                expected &= ~pixelsOf(rect);
            } else {
                region.add(rect);
                expected |= pixelsOf(rect);
            }
            ASSERT_EQ(pixelsOf(region), expected);
        }
    }
}

TEST(PixelRegionTest, CombinesRegionsLikeSetsOfPixels) {
    RandomRects rects;
    for (int round = 0; round < 300; ++round) {
        PixelRegion one;
        PixelRegion other;
        for (int step = 0; step < 3; ++step) {
            one.add(rects.next());
            other.add(rects.next());
        }
        auto const a = pixelsOf(one);
        auto const b = pixelsOf(other);
        ASSERT_EQ(pixelsOf(one.intersectedWith(other)), a & b);
        ASSERT_EQ(pixelsOf(symmetricDifference(one, other)), a ^ b);
        auto both = one;
        both.add(other);
        ASSERT_EQ(pixelsOf(both), a | b);
        both.subtract(other);
        ASSERT_EQ(pixelsOf(both), a & ~b);
    }
}

TEST(PixelRegionTest, WhatItHasAlreadyIsNotCutUp) {
    PixelRect const box{2, 2, 12, 8};
    PixelRegion region(box);
    region.add(PixelRect{4, 4, 3, 2});
    region.add(box);
    EXPECT_THAT(region.rects(), testing::ElementsAre(box));
    region.add(PixelRect{10, 4, 8, 2});
    EXPECT_THAT(region.rects(), testing::ElementsAre(box, PixelRect{14, 4, 4, 2}));
}

TEST(PixelRegionTest, AnEmptyRectangleAddsNothing) {
    PixelRegion region;
    region.add(PixelRect{3, 3, 0, 5});
    region.add(PixelRect{3, 3, 5, -1});
    EXPECT_TRUE(region.isEmpty());
}

} // namespace
} // namespace trovel
