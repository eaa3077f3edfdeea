#include "capture/crop.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

constexpr Rect kPrimary{0, 0, 1000, 800};
constexpr Size kPrimaryPixels{2000, 1600};

TEST(Crop, TurnsPointsFromTheLowerLeftIntoPixelsFromTheTopLeft) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {100, 150, 300, 200}),
              (Rect{200, 900, 600, 400}));
}

TEST(Crop, OfTheWholeScreenIsTheWholePicture) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, kPrimary), (Rect{0, 0, 2000, 1600}));
}

TEST(Crop, AtTheTopEdgeBeginsInTheFirstRow) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {0, 700, 50, 100}).y, 0);
}

TEST(Crop, AtTheBottomEdgeEndsInTheLastRow) {
    auto const rect = cropRect(kPrimaryPixels, 2, kPrimary, {0, 0, 50, 100});
    EXPECT_EQ(rect.maxY(), 1600);
    EXPECT_EQ(rect.height, 200);
}

TEST(Crop, OnAScreenLeftOfAndBelowThePrimaryOneCountsFromThatScreensCorner) {
    Rect const frame{-1280, -1024, 1280, 1024};
    EXPECT_EQ(cropRect({1280, 1024}, 1, frame, {-1270, -1004, 100, 50}), (Rect{10, 954, 100, 50}));
}

TEST(Crop, BeyondTheRightAndBottomEdgesIsCutThere) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {900, -100, 300, 200}),
              (Rect{1800, 1400, 200, 200}));
}

TEST(Crop, BeyondTheLeftAndTopEdgesStartsThereAndKeepsItsSize) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {-50, 750, 300, 100}), (Rect{0, 0, 600, 200}));
}

TEST(Crop, WhollyToTheRightOrBelowHasNoArea) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {1100, 100, 50, 50}).width, 0);
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {100, -100, 50, 50}).height, 0);
}

TEST(Crop, LimitsToThePictureThatCameNotToTheScreenThatWasAskedFor) {
    EXPECT_EQ(cropRect({1500, 1000}, 2, kPrimary, {700, 200, 200, 200}),
              (Rect{1400, 800, 100, 200}));
}

TEST(Crop, OfAPictureWithoutAreaIsNeverAtANegativePosition) {
    EXPECT_EQ(cropRect({-1, -1}, 2, kPrimary, {100, 100, 50, 50}), (Rect{0, 0, -1, -1}));
}

TEST(Crop, DoesNotRound) {
    EXPECT_EQ(cropRect(kPrimaryPixels, 2, kPrimary, {10.25, 700, 30.5, 99.75}),
              (Rect{20.5, 0.5, 61, 199.5}));
}

} // namespace
} // namespace trovel
