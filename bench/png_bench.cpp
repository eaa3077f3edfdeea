#include "platform/linux/pictures/png_encoder.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace trovel {
namespace {

/// What a desktop shows, roughly: flat areas, lines of something like text, and a noisy photograph
/// in the right half of the lower half.
std::vector<std::uint32_t> desktopPixels(int width, int height) {
    std::vector<std::uint32_t> pixels;
    std::uint32_t noise = 12345;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            noise = noise * 1664525U + 1013904223U;
            bool const isPhotograph = x > width / 2 && y > height / 2;
            bool const isText = y % 18 < 11 && (x / 7 * 31 + y / 18 * 17) % 5 < 2 && x % 7 < 5;
            auto const gray = static_cast<std::uint32_t>((x + y) * 255 / (width + height));
            std::uint32_t const flat = isText ? 0x202020U : 0xf4f4f4U;
            pixels.push_back(isPhotograph ? gray * 0x010101U + (noise >> 29U) * 0x010101U : flat);
        }
    }
    return pixels;
}

void png(benchmark::State& state) {
    auto const width = static_cast<int>(state.range(0));
    auto const height = static_cast<int>(state.range(1));
    auto const pixels = desktopPixels(width, height);
    PixelRows const rows{reinterpret_cast<std::uint8_t const*>(pixels.data()),
                         static_cast<std::size_t>(width) * 4, width, height};
    std::size_t bytes = 0;
    for (auto _ : state) bytes = encodePng(rows, 1).size();
    state.counters["kB"] = static_cast<double>(bytes) / 1e3;
}
BENCHMARK(png)->Args({1200, 800})->Args({3840, 2160})->Unit(benchmark::kMillisecond);

} // namespace
} // namespace trovel
