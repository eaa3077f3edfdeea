#include "capture/selection_overlay_view.h"
#include "platform/simulated/simulated_window_host.h"
#include "platform/ui/canvas_recording.h"

#include <benchmark/benchmark.h>

namespace trovel {
namespace {

/// One motion of a drag on a 5120 x 2880 screen: the event, and the recording of what is to be
/// drawn.
void overlayRedraw(benchmark::State& state) {
    SelectionOverlayView view({0, 0, 5120, 2880});
    view.mouseDown({MouseEvent::Kind::leftDown, {100, 100}, 0});
    double distance = 10;
    for (auto _ : state) {
        distance = distance < 2500 ? distance + 1 : 10;
        view.mouseDragged({MouseEvent::Kind::leftDragged, {100 + distance, 100 + distance}, 0});
        CanvasRecording recording(simulatedTextSize);
        view.draw(recording);
        benchmark::DoNotOptimize(recording.operations().data());
    }
}
BENCHMARK(overlayRedraw);

} // namespace
} // namespace trovel
