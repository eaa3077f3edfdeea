#include "platform/linux/qt/symbols.h"

#include "tests/linux/qt/native_world.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>

namespace trovel {
namespace {

constexpr std::array<std::string_view, 13> kNames{"brain.head.profile",
                                                  "bubble.left.fill",
                                                  "sparkles",
                                                  "magnifyingglass",
                                                  "app.fill",
                                                  "cpu",
                                                  "safari",
                                                  "globe",
                                                  "command",
                                                  "crop",
                                                  "paperplane.fill",
                                                  "rectangle.dashed.badge.record",
                                                  "hand.point.up.braille"};

class SymbolsTest : public testing::Test {
protected:
    static QImage drawn(std::string_view name, QRectF const& box, double scale = 1) {
        QImage image(QSize(48, 48), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(scale, scale);
        drawSymbol(painter, name, box, Font::Weight::medium, Qt::red);
        return image;
    }

    NativeWorld world;
};

TEST_F(SymbolsTest, EveryNameInUseHasADrawingOfItsOwn) {
    std::set<QByteArray> drawings;
    for (auto const name : kNames) {
        EXPECT_TRUE(hasSymbol(name)) << name;
        auto const image = drawn(name, {0, 0, 48, 48});
        drawings.insert({reinterpret_cast<char const*>(image.constBits()), image.sizeInBytes()});
    }
    EXPECT_EQ(drawings.size(), kNames.size());
    EXPECT_FALSE(hasSymbol("no.such.symbol"));
}

TEST_F(SymbolsTest, AnUnknownSymbolDrawsNothing) {
    EXPECT_EQ(drawn("no.such.symbol", {0, 0, 48, 48}), drawn("crop", {0, 0, 0, 0}));
}

TEST_F(SymbolsTest, ASymbolFillsWholePixelsInTheMiddleOfItsBox) {
    auto const whole = drawn("crop", {3, 3, 18, 18});
    EXPECT_EQ(drawn("crop", {3.25, 3.25, 17.5, 17.5}), whole);
    EXPECT_EQ(drawn("crop", {1.5, 1.5, 9, 9}, 2), whole);
    EXPECT_EQ(drawn("crop", {0, 3, 24, 18}), whole) << "it is a square";
}

} // namespace
} // namespace trovel
