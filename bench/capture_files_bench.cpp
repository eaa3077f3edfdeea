#include "delivery/capture_files.h"
#include "platform/linux/files/file_system_linux.h"
#include "tests/linux/support/temporary_folder.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

namespace trovel {
namespace {

void put(TemporaryFolder const& folder, std::string const& ending, int count) {
    for (int index = 0; index < count; ++index) {
        folder.write(std::to_string(index) + ending, "foreign");
    }
}

/// A folder that holds as many captures as are kept, among so many files of other programs.
void pruneAmongForeignFiles(benchmark::State& state) {
    constexpr std::size_t kKept = 50;
    TemporaryFolder const folder;
    put(folder, ".png", kKept);
    put(folder, ".txt", static_cast<int>(state.range(0)));
    FileSystemLinux files;
    for (auto _ : state) pruneCaptures(files, folder.path().string(), kKept);
}
BENCHMARK(pruneAmongForeignFiles)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace trovel
