#include "delivery/ai_app_detector.h"
#include "platform/simulated/simulated_desktop.h"

#include <benchmark/benchmark.h>

#include <string>

namespace trovel {
namespace {

/// The choice of a target among 500 running applications, of which the last one is it.
void detection(benchmark::State& state) {
    SimulatedDesktop desktop;
    for (int i = 0; i < 499; ++i) {
        SimulatedProgram program;
        program.localizedName = "Application " + std::to_string(i);
        program.bundleIdentifier = "com.example.application" + std::to_string(i);
        desktop.workspace.start(program);
    }
    SimulatedProgram copilot;
    copilot.localizedName = "Copilot";
    copilot.bundleIdentifier = "com.microsoft.copilot";
    desktop.workspace.start(copilot);
    AIAppDetector const detector(desktop.workspace, Preferences(desktop.preferences));
    for (auto _ : state) benchmark::DoNotOptimize(detector.detectTargetApp());
}
BENCHMARK(detection)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace trovel
