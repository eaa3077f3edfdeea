#include "platform/linux/x11/overlay/overlay_painter.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/pixel_reader.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/x11/overlay/frozen_desktop.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace trovel {
namespace {

constexpr PixelRect kArea{37, 21, 400, 300};
constexpr Color kDim = Color::white(0, 0.35);
constexpr Color kBlue = Color::rgba(0.1, 0.4, 0.9, 1);
constexpr TextAttributes kText{Font::monospacedSystem(10, Font::Weight::medium),
                               Color::white(1, 1)};

using Operations = std::vector<CanvasOperation>;

/// A pixmap of the canvas's size.
class TestTarget {
public:
    explicit TestTarget(XcbConnection& x) : x_(x), pixmap_(xcb_generate_id(x.get())) {
        xcb_create_pixmap(x.get(), x.screen().root_depth, pixmap_, x.root(), kArea.width,
                          kArea.height);
    }
    ~TestTarget() { xcb_free_pixmap(x_.get(), pixmap_); }
    TestTarget(TestTarget const&) = delete;
    TestTarget& operator=(TestTarget const&) = delete;

    [[nodiscard]] xcb_pixmap_t pixmap() const { return pixmap_; }

    /// Shows the canvas's part of a picture of the desktop.
    void copyFrom(xcb_pixmap_t desktop) {
        auto const gc = xcb_generate_id(x_.get());
        xcb_create_gc(x_.get(), gc, pixmap_, 0, nullptr);
        xcb_copy_area(x_.get(), desktop, pixmap_, gc, kArea.x, kArea.y, 0, 0, kArea.width,
                      kArea.height);
        xcb_free_gc(x_.get(), gc);
    }

    /// Shows something that no canvas shows.
    void spoil() {
        auto const gc = xcb_generate_id(x_.get());
        std::uint32_t const color = 0x00ff00;
        xcb_create_gc(x_.get(), gc, pixmap_, XCB_GC_FOREGROUND, &color);
        xcb_rectangle_t const all{0, 0, kArea.width, kArea.height};
        xcb_poly_fill_rectangle(x_.get(), pixmap_, gc, 1, &all);
        xcb_free_gc(x_.get(), gc);
    }

    [[nodiscard]] std::vector<std::uint32_t> pixels() const {
        auto const buffer = readPixels(x_, pixmap_, {0, 0, kArea.width, kArea.height});
        EXPECT_TRUE(buffer);
        std::vector<std::uint32_t> result;
        if (!buffer) return result;
        for (int y = 0; y < buffer->rows.height; ++y) {
            auto const* const row = reinterpret_cast<std::uint32_t const*>(
                buffer->rows.data + buffer->rows.stride * static_cast<std::size_t>(y));
            for (int i = 0; i < buffer->rows.width; ++i) result.push_back(row[i] & 0xffffffU);
        }
        return result;
    }

private:
    XcbConnection& x_;
    xcb_pixmap_t pixmap_;
};

class OverlayPainterTest : public testing::TestWithParam<double> {
protected:
    OverlayPainterTest() : display_({"-screen", "0", "640x480x24"}), x_(XcbConnection::open()) {
        drawDesktop();
        snapshot_ = std::make_unique<Snapshot>(*x_);
        render_ = std::make_unique<XcbRender>(*x_);
    }

    void SetUp() override { ASSERT_TRUE(render_->isAvailable()); }

    /// Stripes of many colours on the root window, so that a pixel out of place is seen.
    void drawDesktop() {
        auto const gc = xcb_generate_id(x_->get());
        xcb_create_gc(x_->get(), gc, x_->root(), 0, nullptr);
        for (std::uint32_t i = 0; i < 640; ++i) {
            std::uint32_t const color = i * 2654435761U >> 8U;
            xcb_change_gc(x_->get(), gc, XCB_GC_FOREGROUND, &color);
            xcb_rectangle_t const stripe{static_cast<std::int16_t>(i), 0, 1, 480};
            xcb_rectangle_t const bar{0, static_cast<std::int16_t>(i * 3 % 480), 640, 1};
            xcb_poly_fill_rectangle(x_->get(), x_->root(), gc, 1, i % 2 == 0 ? &stripe : &bar);
        }
        xcb_free_gc(x_->get(), gc);
    }

    [[nodiscard]] double scale() const { return GetParam(); }
    [[nodiscard]] Rect bounds() const {
        return {0, 0, kArea.width / scale(), kArea.height / scale()};
    }
    [[nodiscard]] FillRectOperation dimming() const {
        return {bounds(), kDim, CompositingOperation::sourceOver};
    }

    /// What a selection overlay draws.
    [[nodiscard]] Operations selection(Rect const& rect) {
        Operations operations{dimming()};
        operations.emplace_back(
            FillRectOperation{rect, Color::clear(), CompositingOperation::copy});
        operations.emplace_back(StrokeRectOperation{rect.insetBy(0.5), 1, kBlue});
        auto const text = std::to_string(static_cast<int>(rect.width)) + " x " +
                          std::to_string(static_cast<int>(rect.height));
        auto const size = text_.sizeOfText(text, kText.font);
        Rect const box{rect.midX() - size.width / 2 - 4, rect.minY() - size.height - 10,
                       size.width + 8, size.height + 4};
        operations.emplace_back(FillRoundedRectOperation{box, 4, 4, Color::white(0, 0.7)});
        operations.emplace_back(DrawTextOperation{text, {box.x + 4, box.y + 2}, kText});
        return operations;
    }

    /// A painter on a target that shows anything but the desktop.
    [[nodiscard]] std::unique_ptr<OverlayPainter> painter(TestTarget& target) {
        return std::make_unique<OverlayPainter>(*x_, *render_, text_, *snapshot_, kArea,
                                                target.pixmap(), OverlayPainter::Ground::unknown);
    }

    /// The whole drawing on a target that knows nothing of earlier ones.
    [[nodiscard]] std::vector<std::uint32_t> paintedAtOnce(Operations const& operations) {
        TestTarget target(*x_);
        painter(target)->show(operations);
        return target.pixels();
    }

    TestDisplay display_;
    QtFonts fonts_;
    std::unique_ptr<XcbConnection> x_;
    TextRasterizer text_{GetParam()};
    std::unique_ptr<Snapshot> snapshot_;
    std::unique_ptr<XcbRender> render_;
};

TEST_P(OverlayPainterTest, AllStepsOfADragLookAsIfPaintedAtOnce) {
    std::mt19937 engine(3);
    auto const pixel = [&](std::int64_t limit) {
        return std::uniform_int_distribution<std::int64_t>(-20, limit + 20)(engine);
    };
    Operations const plain{dimming()};
    TestTarget target(*x_);
    auto const painter = this->painter(target);
    painter->show(plain);
    ASSERT_EQ(target.pixels(), paintedAtOnce(plain));
    for (int step = 0; step < 60; ++step) {
        Rect const rect{static_cast<double>(pixel(kArea.width)) / scale(),
                        static_cast<double>(pixel(kArea.height)) / scale(),
                        static_cast<double>(std::abs(pixel(kArea.width))) / scale(),
                        static_cast<double>(std::abs(pixel(kArea.height))) / scale()};
        auto const operations = step % 9 == 8 ? plain : selection(rect);
        painter->show(operations);
        ASSERT_EQ(target.pixels(), paintedAtOnce(operations)) << "step " << step;
    }
}

TEST_P(OverlayPainterTest, AnyTwoDrawingsFollowOneAnother) {
    std::mt19937 engine(11);
    auto const any = [&](int limit) { return static_cast<int>(engine() % unsigned(limit)); };
    auto const randomRect = [&] {
        return Rect{(any(400) - 20) / scale(), (any(300) - 20) / scale(), any(300) / scale(),
                    any(200) / scale()};
    };
    auto const randomColor = [&] {
        return Color::rgba(any(2), any(3) / 2.0, any(2), any(4) / 3.0);
    };
    auto const randomOperation = [&]() -> CanvasOperation {
        switch (any(4)) {
        case 0:
            return FillRectOperation{any(3) == 0 ? bounds() : randomRect(), randomColor(),
                                     any(2) == 0 ? CompositingOperation::copy
                                                 : CompositingOperation::sourceOver};
        case 1: return StrokeRectOperation{randomRect(), 1.0 + any(4), randomColor()};
        case 2: return FillRoundedRectOperation{randomRect(), 4, 6, randomColor()};
        default:
            return DrawTextOperation{any(2) == 0 ? "320 x 240" : "größer → 5",
                                     {any(300) / scale(), any(200) / scale()},
                                     {kText.font, randomColor()}};
        }
    };
    TestTarget target(*x_);
    auto const painter = this->painter(target);
    Operations shown{dimming()};
    for (int step = 0; step < 60; ++step) {
        if (!shown.empty() && any(2) == 0) {
            shown[static_cast<std::size_t>(any(static_cast<int>(shown.size())))] =
                randomOperation();
        } else if (shown.size() > 6) {
            shown.erase(shown.begin() + any(7));
        } else {
            shown.push_back(randomOperation());
        }
        painter->show(shown);
        ASSERT_EQ(target.pixels(), paintedAtOnce(shown)) << "step " << step;
    }
}

TEST_P(OverlayPainterTest, TheDesktopShowsThroughTheHoleUnchangedAndDimmedAroundIt) {
    auto const area = readPixels(*x_, snapshot_->pixmap(), kArea);
    ASSERT_TRUE(area);
    auto const desktop = [&](std::int64_t x, std::int64_t y) {
        auto const* const row = area->rows.data + area->rows.stride * static_cast<std::size_t>(y);
        return reinterpret_cast<std::uint32_t const*>(row)[x] & 0xffffffU;
    };
    auto const pixels =
        paintedAtOnce(selection({100 / scale(), 100 / scale(), 200 / scale(), 100 / scale()}));
    auto const painted = [&](std::int64_t x, std::int64_t y) {
        return pixels[static_cast<std::size_t>(y * kArea.width + x)];
    };
    auto const border = std::max<std::int64_t>(1, std::llround(scale()));
    EXPECT_EQ(painted(100, 100), painted(299, 199));
    EXPECT_EQ(painted(100 + border - 1, 150), painted(100, 100)) << "the line is inside the hole";
    for (std::int64_t y = 100 + border; y < 200 - border; ++y) {
        for (std::int64_t x = 100 + border; x < 300 - border; ++x) {
            ASSERT_EQ(painted(x, y), desktop(x, y)) << x << ", " << y;
        }
    }
    for (std::int64_t x = 0; x < kArea.width; ++x) {
        for (unsigned shift = 0; shift < 24; shift += 8) {
            auto const was = desktop(x, 10) >> shift & 0xffU;
            auto const is = painted(x, 10) >> shift & 0xffU;
            ASSERT_NEAR(is, was * 0.65, 1.0);
        }
    }
}

TEST_P(OverlayPainterTest, ATargetThatShowsTheDesktopAlreadyIsOnlyDimmed) {
    TestTarget target(*x_);
    target.copyFrom(snapshot_->pixmap());
    OverlayPainter painter(*x_, *render_, text_, *snapshot_, kArea, target.pixmap(),
                           OverlayPainter::Ground::snapshot);
    painter.show({dimming()});
    EXPECT_EQ(target.pixels(), paintedAtOnce({dimming()}));
    auto const operations = selection({50 / scale(), 60 / scale(), 200 / scale(), 120 / scale()});
    painter.show(operations);
    EXPECT_EQ(target.pixels(), paintedAtOnce(operations));
}

TEST_P(OverlayPainterTest, ACoveredPartIsPaintedAnew) {
    auto const operations = selection({50 / scale(), 60 / scale(), 200 / scale(), 120 / scale()});
    TestTarget target(*x_);
    auto const painter = this->painter(target);
    painter->show(operations);
    target.spoil(); // as whatever covered the window leaves it
    painter->repaint({0, 0, 150, kArea.height});
    painter->repaint({150, 0, kArea.width - 150, kArea.height});
    EXPECT_EQ(target.pixels(), paintedAtOnce(operations));
}

INSTANTIATE_TEST_SUITE_P(Scales, OverlayPainterTest, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

TEST(TextRasterizerTest, LettersOfOneWidthStandSideBySide) {
    QtFonts const fonts;
    for (double const scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        TextRasterizer text(scale);
        auto const one = text.sizeOfText("0", kText.font);
        auto const ten = text.sizeOfText("1234 x 567", kText.font);
        EXPECT_NEAR(ten.width, 10 * one.width, 1e-9);
        EXPECT_EQ(ten.height, one.height);
        EXPECT_GT(one.height, kText.font.size);
        auto const line = text.drawText("1234 x 567", kText);
        EXPECT_EQ(line.width, static_cast<int>(std::ceil(ten.width * scale - 1e-9)) +
                                  2 * TextRasterizer::kTextMargin);
    }
}

TEST(TextRasterizerTest, ALineOfLettersHasTheirInk) {
    QtFonts const fonts;
    TextRasterizer text(2);
    auto const ink = [](Bitmap const& bitmap) {
        std::uint64_t sum = 0;
        for (auto const pixel : bitmap.pixels) sum += pixel >> 24U;
        return sum;
    };
    auto const one = ink(text.drawText("8", kText));
    EXPECT_GT(one, 0U);
    EXPECT_EQ(ink(text.drawText("8888", kText)), 4 * one);
    EXPECT_EQ(ink(text.drawText("8  8", kText)), 2 * one);
}

} // namespace
} // namespace trovel
