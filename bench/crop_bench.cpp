#include "capture/crop.h"
#include "platform/geometry.h"

#include <benchmark/benchmark.h>

namespace trovel {
namespace {

/// From a selection in points to the whole pixels to cut out.
void crop(benchmark::State& state) {
    double const scale = 1.75;
    Rect const frame{-3840 / scale, 0, 3840 / scale, 2160 / scale};
    double offset = 0;
    for (auto _ : state) {
        offset = offset < 500 ? offset + 0.5 : 0;
        Rect const selection{frame.x + offset, 100.25, 320 + offset, 240};
        benchmark::DoNotOptimize(outwardPixelRect(cropRect({3840, 2160}, scale, frame, selection)));
    }
}
BENCHMARK(crop);

} // namespace
} // namespace trovel
