#pragma once

#include "report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kirolane::bench {

/// What a measurement is given by the command line.
struct Inputs {
    std::string clips;     ///< folder of the clips that clips.sh makes
    std::string clip;      ///< one of them: 1080p30 H.264 with AAC, some 20 s
    std::string shortClip; ///< a small one
    std::string programs;  ///< folder of the other measuring programs
};

/// What a measurement is to be started on.
enum class Place : std::uint8_t {
    Anywhere,
    Desktop, ///< an X display of two monitors that nothing else uses
};

/// A measurement: its name on the command line and the rows it prints. Each runs in a process of its own.
struct Benchmark {
    const char* name;
    Place place;
    bool always; ///< run unless others are named
    std::vector<Row> (*run)(const Inputs& inputs);
};

std::vector<Row> MeasureScan(const Inputs& inputs);
std::vector<Row> MeasureRows(const Inputs& inputs);
std::vector<Row> MeasureFirstFrame(const Inputs& inputs);
std::vector<Row> MeasureTwinCost(const Inputs& inputs);
std::vector<Row> MeasureInterlaced(const Inputs& inputs);
std::vector<Row> MeasureStart(const Inputs& inputs);
std::vector<Row> MeasureMemory(const Inputs& inputs);
std::vector<Row> MeasureIdle(const Inputs& inputs);
std::vector<Row> MeasureEngineEnds(const Inputs& inputs);
std::vector<Row> MeasureOpenings(const Inputs& inputs);
std::vector<Row> MeasureChangeOver(const Inputs& inputs);
std::vector<Row> MeasurePictures(const Inputs& inputs);
std::vector<Row> MeasureDisplay(const Inputs& inputs);
std::vector<Row> MeasureLips(const Inputs& inputs);
std::vector<Row> MeasureDrift(const Inputs& inputs);
std::vector<Row> MeasureLongDrift(const Inputs& inputs);
std::vector<Row> MeasureKeys(const Inputs& inputs);
std::vector<Row> MeasureTick(const Inputs& inputs);
std::vector<Row> MeasureSoundBeside(const Inputs& inputs);
std::vector<Row> MeasureSoundOpened(const Inputs& inputs);
std::vector<Row> MeasurePreferences(const Inputs& inputs);
std::vector<Row> MeasureFolderPress(const Inputs& inputs);

inline constexpr int kRuns = 7; ///< samples of each figure, taken in turn with its reference's

} // namespace kirolane::bench
