#include "platform/main_queue.h"
#include "platform/pasteboard.h"
#include "platform/screen_capturer.h"
#include "platform/screens.h"
#include "platform/worker.h"
#include "tests/contract/contract_world.h"

namespace trovel {
namespace {

class CaptureContract : public ContractTest {
protected:
    using Pixels = std::shared_ptr<PixelImage const>;

    void TearDown() override {
        if (isInSession_) platform.capturer.sessionDidEnd();
    }

    /// Captures the only display with its native pixels, the way the program does it. The session
    /// goes on until the end of the test: a picture may be cut while it lasts.
    Pixels captureDisplay() {
        auto const screen = platform.screens.screens().front();
        Pixels pixels;
        bool isDone = false;
        isInSession_ = true;
        platform.capturer.sessionWillBegin();
        platform.worker.run([&] {
            auto const displays = platform.capturer.shareableDisplays();
            if (displays) {
                auto const& display = displays->front();
                StreamConfiguration configuration;
                configuration.width =
                    static_cast<std::int64_t>(screen.backingScaleFactor * display.width);
                configuration.height =
                    static_cast<std::int64_t>(screen.backingScaleFactor * display.height);
                configuration.scalesToFit = false;
                configuration.showsCursor = false;
                auto captured = platform.capturer.captureImage(display, configuration);
                if (captured) pixels = std::move(*captured);
            }
            platform.mainQueue.post([&] { isDone = true; });
        });
        EXPECT_TRUE(world->waitUntil([&] { return isDone; }));
        return pixels;
    }

private:
    bool isInSession_ = false;
};

TEST_F(CaptureContract, EveryScreenNamesADisplayThatCanBeCaptured) {
    auto const screens = platform.screens.screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens.front().frame.x, 0);
    EXPECT_EQ(screens.front().frame.y, 0);
    EXPECT_GE(screens.front().frame.width, 800);
    EXPECT_GE(screens.front().frame.height, 600);
    std::vector<CaptureDisplay> displays;
    bool isDone = false;
    platform.capturer.sessionWillBegin();
    platform.worker.run([&] {
        auto listed = platform.capturer.shareableDisplays();
        if (listed) displays = std::move(*listed);
        platform.mainQueue.post([&] { isDone = true; });
    });
    ASSERT_TRUE(world->waitUntil([&] { return isDone; }));
    platform.capturer.sessionDidEnd();
    ASSERT_EQ(displays.size(), 1U);
    EXPECT_EQ(displays.front().displayId, screens.front().screenNumber);
    EXPECT_EQ(displays.front().width, screens.front().frame.width);
    EXPECT_EQ(displays.front().height, screens.front().frame.height);
}

TEST_F(CaptureContract, APictureOfTheDisplayHasItsPixelsAndNoPointer) {
    world->movePointer({100, 100});
    auto const pixels = captureDisplay();
    ASSERT_TRUE(pixels);
    auto const frame = platform.screens.screens().front().frame;
    EXPECT_EQ(pixels->widthPixels(), static_cast<int>(frame.width));
    EXPECT_EQ(pixels->heightPixels(), static_cast<int>(frame.height));
    PixelRect const all{0, 0, pixels->widthPixels(), pixels->heightPixels()};
    EXPECT_TRUE(world->pixelsOf(*pixels) == world->displayPixels(all));
}

TEST_F(CaptureContract, ACutRoundsOutwardToWholePixels) {
    auto const pixels = captureDisplay();
    ASSERT_TRUE(pixels);
    auto const cut = pixels->croppedTo({10.5, 20.25, 30, 40.5});
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->widthPixels(), 31);
    EXPECT_EQ(cut->heightPixels(), 41);
    EXPECT_TRUE(world->pixelsOf(*cut) == world->displayPixels({10, 20, 31, 41}));
}

TEST_F(CaptureContract, ACutOfACutCountsFromItsOwnCorner) {
    auto const pixels = captureDisplay();
    ASSERT_TRUE(pixels);
    auto const cut = pixels->croppedTo({100, 100, 50, 50});
    ASSERT_TRUE(cut);
    auto const second = cut->croppedTo({10, 20, 5, 5});
    ASSERT_TRUE(second);
    EXPECT_TRUE(world->pixelsOf(*second) == world->displayPixels({110, 120, 5, 5}));
}

TEST_F(CaptureContract, ACutEndsAtThePicturesEdgeAndIsNothingBeyondIt) {
    auto const pixels = captureDisplay();
    ASSERT_TRUE(pixels);
    double const width = pixels->widthPixels();
    double const height = pixels->heightPixels();
    auto const cut = pixels->croppedTo({width - 10, height - 20, 100, 100});
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->widthPixels(), 10);
    EXPECT_EQ(cut->heightPixels(), 20);
    EXPECT_FALSE(pixels->croppedTo({width, 0, 10, 10}));
    EXPECT_FALSE(pixels->croppedTo({-10, 0, 10, 10}));
    EXPECT_FALSE(pixels->croppedTo({10, 10, 0, 10}));
    EXPECT_FALSE(pixels->croppedTo({10, 10, 10, -1}));
}

TEST_F(CaptureContract, APictureOnThePasteboardIsReadBackPixelForPixel) {
    auto const pixels = captureDisplay();
    ASSERT_TRUE(pixels);
    auto const cut = pixels->croppedTo({40, 30, 200, 100});
    ASSERT_TRUE(cut);
    platform.pasteboard.clearContents();
    EXPECT_EQ(world->pastedPixels(), std::nullopt);
    ASSERT_TRUE(platform.pasteboard.writeImage({cut, {200, 100}}));
    auto const pasted = world->pastedPixels();
    ASSERT_TRUE(pasted);
    EXPECT_TRUE(*pasted == world->displayPixels({40, 30, 200, 100}));
    platform.pasteboard.clearContents();
    EXPECT_EQ(world->pastedPixels(), std::nullopt);
}

} // namespace
} // namespace trovel
