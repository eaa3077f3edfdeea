#include "platform/linux/pictures/png_encoder.h"

#include <QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace trovel {
namespace {

using testing::ElementsAre;

struct Picture {
    int width;
    int height;
    std::size_t stride; // in pixels
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] PixelRows rows() const {
        return {reinterpret_cast<std::uint8_t const*>(pixels.data()), stride * 4, width, height};
    }
};

/// Random where `noise` is set, else something like a window: flat, with edges and gradients. The
/// highest byte, which means nothing, is never empty.
Picture picture(int width, int height, bool noise, std::size_t padding = 0) {
    Picture result{width, height, static_cast<std::size_t>(width) + padding, {}};
    std::mt19937 engine(static_cast<unsigned>(width * 31 + height));
    for (int y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < result.stride; ++x) {
            auto const flat = static_cast<std::uint32_t>((x / 7 % 5) * 0x102030 + unsigned(y) / 3);
            auto const value = noise ? static_cast<std::uint32_t>(engine()) : flat;
            result.pixels.push_back(value | 0x5a000000U);
        }
    }
    return result;
}

void expectSamePixels(Picture const& expected, std::vector<std::uint8_t> const& png) {
    auto const image = QImage::fromData(png.data(), static_cast<int>(png.size()), "PNG")
                           .convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(image.width(), expected.width);
    ASSERT_EQ(image.height(), expected.height);
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            auto const wanted = expected.pixels[static_cast<std::size_t>(y) * expected.stride +
                                                static_cast<std::size_t>(x)];
            ASSERT_EQ(image.pixel(x, y) & 0xffffffU, wanted & 0xffffffU) << "at " << x << ", " << y;
        }
    }
}

struct Chunk {
    std::string type;
    std::vector<std::uint8_t> data;
};

std::uint32_t numberAt(std::vector<std::uint8_t> const& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8U | bytes[at + i];
    return value;
}

/// The sum that ends a chunk, bit by bit as the format describes it.
std::uint32_t checkSum(std::uint8_t const* data, std::size_t size) {
    std::uint32_t sum = 0xffffffffU;
    for (std::size_t i = 0; i < size; ++i) {
        sum ^= data[i];
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1U) ^ ((sum & 1U) ? 0xedb88320U : 0U);
    }
    return ~sum;
}

std::vector<Chunk> chunksOf(std::vector<std::uint8_t> const& png) {
    std::vector<Chunk> chunks;
    for (std::size_t at = 8; at + 12 <= png.size();) {
        auto const length = numberAt(png, at);
        auto const data = png.begin() + static_cast<std::ptrdiff_t>(at) + 8;
        EXPECT_EQ(numberAt(png, at + 8 + length), checkSum(&png[at + 4], length + 4));
        chunks.push_back({std::string(data - 4, data), {data, data + length}});
        at += 12 + length;
    }
    return chunks;
}

TEST(PngEncoderTest, PicturesOfAllShapesComeBackPixelForPixel) {
    for (auto const& [width, height] :
         {std::pair{1, 1}, {1, 777}, {777, 1}, {2, 3}, {3, 2}, {5, 5}, {63, 65}, {641, 479}}) {
        for (bool const noise : {false, true}) {
            SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
            auto const source = picture(width, height, noise);
            expectSamePixels(source, encodePng(source.rows(), 1));
        }
    }
}

TEST(PngEncoderTest, BytesBetweenTheRowsAreNoPixels) {
    auto const source = picture(101, 37, true, 13);
    expectSamePixels(source, encodePng(source.rows(), 1));
}

TEST(PngEncoderTest, APictureOfManyBandsComesBackPixelForPixel) {
    auto const flat = picture(2600, 1400, false);
    expectSamePixels(flat, encodePng(flat.rows(), 1));
    // Noise cannot be compressed, so the output outgrows every guess about its size.
    auto const noise = picture(1500, 900, true);
    auto const png = encodePng(noise.rows(), 1);
    EXPECT_GT(png.size(), 1500U * 900U * 3U);
    expectSamePixels(noise, png);
}

TEST(PngEncoderTest, ARowLongerThanABandComesBackPixelForPixel) {
    auto const source = picture(32767, 3, true);
    expectSamePixels(source, encodePng(source.rows(), 1));
}

TEST(PngEncoderTest, ThereIsNothingInItButThePictureItsColoursAndItsResolution) {
    auto const source = picture(20, 10, false);
    auto const chunks = chunksOf(encodePng(source.rows(), 2));
    std::vector<std::string> types;
    for (auto const& chunk : chunks) types.push_back(chunk.type);
    ASSERT_THAT(types, ElementsAre("IHDR", "sRGB", "pHYs", "IDAT", "IEND"));
    EXPECT_THAT(chunks[0].data, ElementsAre(0, 0, 0, 20, 0, 0, 0, 10, 8, 2, 0, 0, 0));
    EXPECT_THAT(chunks[1].data, ElementsAre(0));
}

TEST(PngEncoderTest, TheResolutionIsSeventyTwoDotsToTheInchTimesTheScale) {
    auto const source = picture(4, 4, false);
    for (auto const& [scale, expected] :
         {std::pair{1.0, 2835U}, {1.25, 3543U}, {1.75, 4961U}, {2.0, 5669U}}) {
        auto const chunks = chunksOf(encodePng(source.rows(), scale));
        EXPECT_EQ(numberAt(chunks[2].data, 0), expected) << "to the metre at scale " << scale;
        EXPECT_EQ(numberAt(chunks[2].data, 4), expected);
        EXPECT_EQ(chunks[2].data[8], 1) << "the unit is the metre";
    }
}

} // namespace
} // namespace trovel
