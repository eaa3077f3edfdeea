#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace trovel {

/// Pixels in memory, row by row from the top: 32 bits each, 0x00RRGGBB in the machine's byte order,
/// the highest byte of any value. `stride` is the distance between rows in bytes.
struct PixelRows {
    std::uint8_t const* data = nullptr;
    std::size_t stride = 0;
    int width = 0;
    int height = 0;
};

/// A whole PNG file: 24-bit colour tagged as sRGB, with `scale` times 72 dots to the inch, and
/// nothing else about it. Neither width nor height may be zero. Any thread.
[[nodiscard]] std::vector<std::uint8_t> encodePng(PixelRows const& pixels, double scale);

} // namespace trovel
