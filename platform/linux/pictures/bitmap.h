#pragma once

#include <cstdint>
#include <vector>

namespace trovel {

/// A picture in memory: 32-bit pixels, 0xAARRGGBB with the colours already multiplied by alpha, row
/// by row from the top.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

} // namespace trovel
