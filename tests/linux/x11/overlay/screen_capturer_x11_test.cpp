#include "platform/linux/x11/overlay/screen_capturer_x11.h"

#include "platform/linux/pictures/captured_image.h"
#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/pixel_reader.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/x11/overlay/frozen_desktop.h"

#include <QImage>

#include <xcb/shm.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace trovel {
namespace {

using namespace std::chrono_literals;

using testing::ElementsAre;

/// The colour of a pixel of the painted desktop.
std::uint32_t patternAt(std::int64_t x, std::int64_t y) {
    auto const value = static_cast<std::uint32_t>(x * 7919 + y * 104729);
    return value * 2654435761U >> 8U;
}

void paintPattern(OtherProgram& program, PixelRect const& area) {
    auto& x = program.connection();
    auto const gc = xcb_generate_id(x.get());
    xcb_create_gc(x.get(), gc, x.root(), 0, nullptr);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(area.width));
    for (auto y = area.y; y < area.y + area.height; ++y) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = patternAt(area.x + static_cast<std::int64_t>(i), y);
        }
        xcb_put_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), gc,
                      static_cast<std::uint16_t>(area.width), 1, static_cast<std::int16_t>(area.x),
                      static_cast<std::int16_t>(y), 0, x.screen().root_depth,
                      static_cast<std::uint32_t>(row.size() * 4),
                      reinterpret_cast<std::uint8_t const*>(row.data()));
    }
    xcb_free_gc(x.get(), gc);
    program.sync();
}

QImage decoded(PixelImage const& image) {
    auto const* const captured = dynamic_cast<CapturedImage const*>(&image);
    auto const png = captured != nullptr ? captured->pngData() : nullptr;
    if (!png) return {};
    return QImage::fromData(png->data(), static_cast<int>(png->size()), "PNG");
}

class ScreenCapturerX11Test : public testing::Test {
protected:
    explicit ScreenCapturerX11Test(std::vector<std::string> arguments = {"-screen", "0",
                                                                         "800x600x24"})
        : display_(std::move(arguments)) {
        paintPattern(other_, {0, 0, 800, 600});
    }

    std::shared_ptr<PixelImage const> cropped(Rect const& rect, std::size_t display = 0) {
        auto const displays = desktop_.capturer.shareableDisplays();
        if (!displays) return nullptr;
        auto const image = desktop_.capturer.captureImage((*displays)[display], {});
        return image ? (*image)->croppedTo(rect) : nullptr;
    }

    static void expectPattern(PixelImage const& image, std::int64_t left, std::int64_t top) {
        auto const picture = decoded(image);
        ASSERT_EQ(picture.width(), image.widthPixels());
        ASSERT_EQ(picture.height(), image.heightPixels());
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                ASSERT_EQ(picture.pixel(x, y) & 0xffffffU, patternAt(left + x, top + y))
                    << x << ", " << y;
            }
        }
    }

    TestDisplay display_;
    OtherProgram other_;
    FrozenDesktop desktop_;
};

TEST_F(ScreenCapturerX11Test, ACropHasExactlyThePixelsOfTheScreen) {
    desktop_.capturer.sessionWillBegin();
    desktop_.settle();
    for (auto const& [rect, x, y, width, height] :
         {std::tuple{Rect{10, 20, 31, 17}, 10, 20, 31, 17},
          {Rect{0, 0, 800, 600}, 0, 0, 800, 600},
          {Rect{799, 599, 1, 1}, 799, 599, 1, 1},
          {Rect{5, 0, 1, 600}, 5, 0, 1, 600},
          {Rect{100.5, 50.25, 10, 10}, 100, 50, 11, 11}}) {
        auto const image = cropped(rect);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->widthPixels(), width);
        EXPECT_EQ(image->heightPixels(), height);
        expectPattern(*image, x, y);
    }
    desktop_.capturer.sessionDidEnd();
}

TEST_F(ScreenCapturerX11Test, APictureIsOfTheMomentWhenTheSessionBegan) {
    desktop_.capturer.sessionWillBegin();
    desktop_.settle();
    WindowProfile later;
    later.isOverrideRedirect = true;
    static_cast<void>(other_.open(later));
    paintPattern(other_, {1, 1, 30, 30});
    other_.sync();
    auto const image = cropped({0, 0, 300, 200});
    ASSERT_TRUE(image);
    expectPattern(*image, 0, 0);
    desktop_.capturer.sessionDidEnd();
}

TEST_F(ScreenCapturerX11Test, OutsideOfASessionTheScreenIsReadAsItIs) {
    auto const image = cropped({40, 50, 60, 70});
    ASSERT_TRUE(image);
    expectPattern(*image, 40, 50);
}

TEST_F(ScreenCapturerX11Test, ACropIsCutAtTheEdgesAndNullOutsideOfThem) {
    auto const image = cropped({790, 590, 100, 100});
    ASSERT_TRUE(image);
    expectPattern(*image, 790, 590);
    EXPECT_EQ(image->widthPixels(), 10);
    EXPECT_FALSE(cropped({800, 0, 10, 10}));
    EXPECT_FALSE(cropped({10, 10, 0, 5}));
}

TEST_F(ScreenCapturerX11Test, ADisplayIsItsPartOfTheDesktopInPoints) {
    ScopedEnvironment const scales("QT_SCREEN_SCALE_FACTORS", "main=1;side=1.75");
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "*main", "400/100x600/100+400+0", "screen"}));
    ASSERT_TRUE(run({"xrandr", "--setmonitor", "side", "400/100x350/100+0+250", "none"}));
    auto const displays = desktop_.capturer.shareableDisplays();
    ASSERT_TRUE(displays);
    ASSERT_EQ(displays->size(), 2U);
    EXPECT_EQ((*displays)[0], (CaptureDisplay{desktop_.x->atom("main"), 400, 600}));
    EXPECT_EQ((*displays)[1].displayId, desktop_.x->atom("side"));
    EXPECT_EQ(static_cast<int>((*displays)[1].width * 1.75), 400);
    EXPECT_EQ((*displays)[1].height, 200);
    auto const image = desktop_.capturer.captureImage((*displays)[1], {});
    ASSERT_TRUE(image);
    EXPECT_EQ((*image)->widthPixels(), 400);
    EXPECT_EQ((*image)->heightPixels(), 350);
    expectPattern(*(*image)->croppedTo({0, 0, 400, 350}), 0, 250);
}

TEST_F(ScreenCapturerX11Test, ADisplayThatIsGoneIsAnError) {
    EXPECT_FALSE(desktop_.capturer.captureImage({12345, 800, 600}, {}));
}

TEST_F(ScreenCapturerX11Test, AServerThatIsGoneIsAnError) {
    auto const displays = desktop_.capturer.shareableDisplays();
    auto const image = desktop_.capturer.captureImage(displays->front(), {});
    display_.kill();
    EXPECT_FALSE((*image)->croppedTo({0, 0, 10, 10}));
    EXPECT_FALSE(desktop_.capturer.shareableDisplays());
    EXPECT_FALSE(desktop_.capturer.captureImage(displays->front(), {}));
}

TEST_F(ScreenCapturerX11Test, TheWorkerMakesThePngAsItsNextTask) {
    auto const image = cropped({10, 10, 100, 50});
    ASSERT_TRUE(image);
    EXPECT_EQ(desktop_.worker.count(), 1U);
    desktop_.worker.runAll();
    auto const* const captured = dynamic_cast<CapturedImage const*>(image.get());
    ASSERT_NE(captured, nullptr);
    auto const png = captured->pngData();
    EXPECT_EQ(png, captured->pngData()) << "it is made once";
    expectPattern(*image, 10, 10);
}

TEST_F(ScreenCapturerX11Test, ACropOfACropHasThePixelsToo) {
    auto const image = cropped({100, 100, 200, 200});
    ASSERT_TRUE(image);
    auto const smaller = image->croppedTo({50, 60, 70, 80});
    ASSERT_TRUE(smaller);
    EXPECT_EQ(smaller->widthPixels(), 70);
    expectPattern(*smaller, 150, 160);
    EXPECT_FALSE(image->croppedTo({200, 0, 5, 5}));
}

TEST_F(ScreenCapturerX11Test, HalfAMinuteAfterTheLastSessionNothingStaysOnTheServer) {
    desktop_.capturer.sessionWillBegin();
    desktop_.settle();
    auto const pixmap = desktop_.overlays.snapshot()->pixmap();
    auto& x = other_.connection();
    auto const isThere = [&] {
        return x.reply<xcb_get_geometry_reply>(xcb_get_geometry(x.get(), pixmap)) != nullptr;
    };
    EXPECT_TRUE(isThere());
    desktop_.capturer.sessionDidEnd();
    EXPECT_EQ(desktop_.overlays.snapshot(), nullptr);
    desktop_.settle();
    EXPECT_TRUE(isThere()) << "a next session may use the memory again";
    desktop_.capturer.sessionWillBegin();
    EXPECT_EQ(desktop_.overlays.snapshot()->pixmap(), pixmap);
    desktop_.impatientQueue.runLate(30s);
    desktop_.settle();
    EXPECT_TRUE(isThere()) << "the half minute began anew";
    desktop_.capturer.sessionDidEnd();
    desktop_.impatientQueue.runLate(29s);
    desktop_.settle();
    EXPECT_TRUE(isThere());
    desktop_.impatientQueue.runLate(30s);
    desktop_.settle();
    EXPECT_FALSE(isThere());
}

TEST_F(ScreenCapturerX11Test, EachSessionTakesThePictureAnew) {
    desktop_.capturer.sessionWillBegin();
    desktop_.capturer.sessionDidEnd();
    auto& x = other_.connection();
    auto const gc = xcb_generate_id(x.get());
    std::uint32_t const color = 0x123456;
    xcb_create_gc(x.get(), gc, x.root(), XCB_GC_FOREGROUND, &color);
    xcb_rectangle_t const spot{10, 10, 1, 1};
    xcb_poly_fill_rectangle(x.get(), x.root(), gc, 1, &spot);
    static_cast<void>(x.reply<xcb_get_input_focus_reply>(xcb_get_input_focus(x.get())));
    desktop_.capturer.sessionWillBegin();
    desktop_.settle();
    auto const pixels =
        readPixels(*desktop_.x, desktop_.overlays.snapshot()->pixmap(), {10, 10, 1, 1});
    ASSERT_TRUE(pixels);
    EXPECT_EQ(*reinterpret_cast<std::uint32_t const*>(pixels->rows.data) & 0xffffffU, color);
    desktop_.capturer.sessionDidEnd();
}

class WithoutSharedMemoryTest : public ScreenCapturerX11Test {
protected:
    WithoutSharedMemoryTest()
        : ScreenCapturerX11Test({"-screen", "0", "800x600x24", "-extension", "MIT-SHM"}) {}
};

TEST_F(WithoutSharedMemoryTest, ThePixelsComeOverTheConnection) {
    ASSERT_EQ(desktop_.x->extension(xcb_shm_id), nullptr);
    auto const image = cropped({0, 0, 800, 600});
    ASSERT_TRUE(image);
    expectPattern(*image, 0, 0);
}

TEST(SixteenBitScreenTest, ColoursComeAsNearAsTheScreenHasThem) {
    TestDisplay const display({"-screen", "0", "320x200x16"});
    OtherProgram other;
    auto& x = other.connection();
    auto const gc = xcb_generate_id(x.get());
    std::uint32_t const red = 0xf800;
    xcb_create_gc(x.get(), gc, x.root(), XCB_GC_FOREGROUND, &red);
    xcb_rectangle_t const all{0, 0, 320, 200};
    xcb_poly_fill_rectangle(x.get(), x.root(), gc, 1, &all);
    std::uint32_t const teal = 0x07ff;
    xcb_change_gc(x.get(), gc, XCB_GC_FOREGROUND, &teal);
    xcb_rectangle_t const part{31, 11, 3, 3};
    xcb_poly_fill_rectangle(x.get(), x.root(), gc, 1, &part);
    other.sync();
    FrozenDesktop desktop;
    auto const displays = desktop.capturer.shareableDisplays();
    auto const image =
        (*desktop.capturer.captureImage(displays->front(), {}))->croppedTo({31, 11, 5, 5});
    ASSERT_TRUE(image);
    auto const picture = decoded(*image);
    EXPECT_EQ(picture.pixel(0, 0), 0xff00ffffU);
    EXPECT_EQ(picture.pixel(4, 0), 0xffff0000U);
}

} // namespace
} // namespace trovel
