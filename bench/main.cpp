// One measurement a process: kirolane_bench NAME CLIPS, where CLIPS is a folder that clips.sh has filled.
// Without arguments it lists the names, what each is to be run on, and whether it is always run or only when
// named. With KIROLANE_FIGURES in the environment the samples are written to NAME.tsv in that folder, too.

#include "benchmarks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace kirolane::bench {
namespace {

// clang-format off
constexpr Benchmark kBenchmarks[] = {
    {"scan",        Place::Anywhere, true,  MeasureScan},
    {"rows",        Place::Anywhere, true,  MeasureRows},
    {"first-frame", Place::Desktop,  true,  MeasureFirstFrame},
    {"twin",        Place::Desktop,  true,  MeasureTwinCost},
    {"interlaced",  Place::Anywhere, true,  MeasureInterlaced},
    {"start",       Place::Desktop,  true,  MeasureStart},
    {"memory",      Place::Anywhere, true,  MeasureMemory},
    {"idle",        Place::Anywhere, true,  MeasureIdle},
    {"engine-ends", Place::Anywhere, true,  MeasureEngineEnds},
    {"openings",    Place::Anywhere, true,  MeasureOpenings},
    {"change-over", Place::Desktop,  true,  MeasureChangeOver},
    {"pictures",    Place::Desktop,  true,  MeasurePictures},
    {"display",     Place::Desktop,  true,  MeasureDisplay},
    {"lips",        Place::Desktop,  true,  MeasureLips},
    {"drift",       Place::Desktop,  true,  MeasureDrift},
    {"drift-long",  Place::Desktop,  false, MeasureLongDrift},
    {"keys",        Place::Desktop,  true,  MeasureKeys},
    {"tick",        Place::Anywhere, true,  MeasureTick},
    {"sound",       Place::Anywhere, true,  MeasureSoundBeside},
    {"opened",      Place::Desktop,  true,  MeasureSoundOpened},
    {"preferences", Place::Anywhere, true,  MeasurePreferences},
    {"folder",      Place::Anywhere, true,  MeasureFolderPress},
};
// clang-format on

int Run(int argc, char** argv) {
    if (argc == 1) {
        for (const Benchmark& benchmark : kBenchmarks)
            std::printf("%s %s %s\n", benchmark.name,
                        benchmark.place == Place::Desktop ? "desktop" : "anywhere",
                        benchmark.always ? "always" : "named");
        return 0;
    }
    const auto* chosen =
        std::find_if(std::begin(kBenchmarks), std::end(kBenchmarks),
                     [&](const Benchmark& b) { return std::string_view(argv[1]) == b.name; });
    if (chosen == std::end(kBenchmarks) || argc != 3) {
        std::fprintf(stderr, "kirolane_bench: usage: kirolane_bench NAME CLIPS\n");
        return 2;
    }
    Inputs inputs;
    inputs.clips = argv[2];
    inputs.clip = inputs.clips + "/stage.mp4";
    inputs.shortClip = inputs.clips + "/small.mp4";
    inputs.programs = std::filesystem::canonical("/proc/self/exe").parent_path().string();
    bool allHold = true;
    const auto rows = chosen->run(inputs);
    if (const char* folder = std::getenv("KIROLANE_FIGURES"))
        WriteFigures(std::string(folder) + '/' + chosen->name + ".tsv", rows);
    for (const Row& row : rows) {
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
