// One measurement a process: kirolane_bench NAME CLIP SHORT-CLIP. Without arguments it lists the names.

#include "benchmarks.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace kirolane::bench {
namespace {

constexpr Benchmark kBenchmarks[] = {
    {"scan", MeasureScan},     {"rows", MeasureRows},   {"first-frame", MeasureFirstFrame},
    {"twin", MeasureTwinCost}, {"start", MeasureStart}, {"memory", MeasureMemory},
    {"idle", MeasureIdle},
};

int Run(int argc, char** argv) {
    if (argc == 1) {
        for (const Benchmark& benchmark : kBenchmarks)
            std::puts(benchmark.name);
        return 0;
    }
    const auto* chosen =
        std::find_if(std::begin(kBenchmarks), std::end(kBenchmarks),
                     [&](const Benchmark& b) { return std::string_view(argv[1]) == b.name; });
    if (chosen == std::end(kBenchmarks) || argc != 4) {
        std::fprintf(stderr, "kirolane_bench: usage: kirolane_bench NAME CLIP SHORT-CLIP\n");
        return 2;
    }
    Inputs inputs;
    inputs.clip = argv[2];
    inputs.shortClip = argv[3];
    inputs.programs = std::filesystem::canonical("/proc/self/exe").parent_path().string();
    bool allHold = true;
    for (const Row& row : chosen->run(inputs)) {
        Print(row);
        allHold = allHold && (!row.hasGoal || row.holds);
    }
    return allHold ? 0 : 1;
}

} // namespace
} // namespace kirolane::bench

int main(int argc, char** argv) {
    int status = 2;
    try {
        status = kirolane::bench::Run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "kirolane_bench: %s\n", failure.what());
    }
    std::fflush(stdout);
    _exit(status); // as the program itself ends: the players are not taken apart
}
