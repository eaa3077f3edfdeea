#include "platform/linux/pictures/png_encoder.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>
#include <string_view>

namespace trovel {

namespace {

using Bytes = std::vector<std::uint8_t>;

void appendBigEndian(Bytes& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

void patchBigEndian(Bytes& out, std::size_t at, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out[at++] = static_cast<std::uint8_t>(value >> shift);
    }
}

/// Opens a chunk and gives the place of its length, which is filled in when it is closed.
std::size_t openChunk(Bytes& out, std::string_view type) {
    auto const start = out.size();
    appendBigEndian(out, 0);
    for (char const letter : type) out.push_back(static_cast<std::uint8_t>(letter));
    return start;
}

void closeChunk(Bytes& out, std::size_t start) {
    constexpr std::size_t kHead = 8;
    auto const length = out.size() - start - kHead;
    patchBigEndian(out, start, static_cast<std::uint32_t>(length));
    constexpr std::size_t kType = 4; // the sum covers the type and the data
    appendBigEndian(out, crc32_gzip_refl(0, out.data() + start + kType, length + kType));
}

void appendHead(Bytes& out, PixelRows const& pixels, double scale) {
    constexpr auto kSignature = std::to_array<std::uint8_t>({137, 'P', 'N', 'G', 13, 10, 26, 10});
    for (auto const byte : kSignature) out.push_back(byte);

    auto chunk = openChunk(out, "IHDR");
    appendBigEndian(out, static_cast<std::uint32_t>(pixels.width));
    appendBigEndian(out, static_cast<std::uint32_t>(pixels.height));
    constexpr auto kEightBitRgb = std::to_array<std::uint8_t>({8, 2, 0, 0, 0});
    for (auto const byte : kEightBitRgb) out.push_back(byte);
    closeChunk(out, chunk);

    chunk = openChunk(out, "sRGB");
    constexpr std::uint8_t kPerceptual = 0;
    out.push_back(kPerceptual);
    closeChunk(out, chunk);

    constexpr double kPointsPerMeter = 72 / 0.0254;
    auto const dotsPerMeter = static_cast<std::uint32_t>(std::lround(kPointsPerMeter * scale));
    chunk = openChunk(out, "pHYs");
    appendBigEndian(out, dotsPerMeter);
    appendBigEndian(out, dotsPerMeter);
    constexpr std::uint8_t kMeter = 1;
    out.push_back(kMeter);
    closeChunk(out, chunk);
}

/// Three bytes a pixel, red first, from four with blue first.
void packRow(std::uint8_t const* source, int width, std::uint8_t* packed) {
    for (int x = 0; x < width; ++x, source += 4, packed += 3) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, source, sizeof pixel);
        packed[0] = static_cast<std::uint8_t>(pixel >> 16);
        packed[1] = static_cast<std::uint8_t>(pixel >> 8);
        packed[2] = static_cast<std::uint8_t>(pixel);
    }
}

/// Rows as PNG filters them: each byte less the one above it.
class UpFilter {
public:
    explicit UpFilter(PixelRows const& pixels)
        : pixels_(pixels), row_(rowBytes()), above_(rowBytes(), 0) {}

    [[nodiscard]] std::size_t rowBytes() const {
        return static_cast<std::size_t>(pixels_.width) * 3;
    }

    void appendRow(int y, std::uint8_t* out) {
        constexpr std::uint8_t kUp = 2;
        packRow(pixels_.data + pixels_.stride * static_cast<std::size_t>(y), pixels_.width,
                row_.data());
        *out++ = kUp;
        for (std::size_t i = 0; i < row_.size(); ++i) {
            out[i] = static_cast<std::uint8_t>(row_[i] - above_[i]);
        }
        row_.swap(above_);
    }

private:
    PixelRows const& pixels_;
    Bytes row_;
    Bytes above_;
};

/// A zlib stream that grows at the end of `out`.
class Deflater {
public:
    explicit Deflater(Bytes& out)
        : out_(out), levelBuffer_(ISAL_DEF_LVL1_DEFAULT),
          stream_(std::make_unique<isal_zstream>()) {
        isal_deflate_init(stream_.get());
        stream_->level = 1;
        stream_->level_buf = levelBuffer_.data();
        stream_->level_buf_size = static_cast<std::uint32_t>(levelBuffer_.size());
        stream_->gzip_flag = IGZIP_ZLIB;
    }

    void append(Bytes& input, bool isLast) {
        stream_->next_in = input.data();
        stream_->avail_in = static_cast<std::uint32_t>(input.size());
        stream_->end_of_stream = isLast ? 1 : 0;
        do {
            auto const used = out_.size();
            // Grows with what there is already, so that the bytes are moved few times.
            out_.resize(used + std::max<std::size_t>(kLeastRoom, used / 2));
            stream_->next_out = out_.data() + used;
            stream_->avail_out = static_cast<std::uint32_t>(out_.size() - used);
            isal_deflate(stream_.get());
            out_.resize(out_.size() - stream_->avail_out);
        } while (stream_->avail_in > 0 || (isLast && stream_->internal_state.state != ZSTATE_END));
    }

private:
    static constexpr std::size_t kLeastRoom = std::size_t{64} * 1024;

    Bytes& out_;
    Bytes levelBuffer_;
    std::unique_ptr<isal_zstream> stream_; // too big for the stack of a thread
};

} // namespace

std::vector<std::uint8_t> encodePng(PixelRows const& pixels, double scale) {
    // Rows go through in bands that fit the processor's cache.
    constexpr std::size_t kBandBytes = std::size_t{256} * 1024;
    Bytes out;
    out.reserve(kBandBytes);
    appendHead(out, pixels, scale);
    auto const chunk = openChunk(out, "IDAT");
    UpFilter filter(pixels);
    Deflater deflater(out);
    auto const filteredRow = filter.rowBytes() + 1;
    auto const rowsAtOnce = static_cast<int>(std::max<std::size_t>(1, kBandBytes / filteredRow));
    Bytes band;
    for (int y = 0; y < pixels.height; y += rowsAtOnce) {
        int const rows = std::min(rowsAtOnce, pixels.height - y);
        band.resize(static_cast<std::size_t>(rows) * filteredRow);
        for (int row = 0; row < rows; ++row) {
            filter.appendRow(y + row, band.data() + static_cast<std::size_t>(row) * filteredRow);
        }
        deflater.append(band, y + rows == pixels.height);
    }
    closeChunk(out, chunk);
    closeChunk(out, openChunk(out, "IEND"));
    out.shrink_to_fit();
    return out;
}

} // namespace trovel
