#pragma once

#include "report.h"

#include <string>
#include <vector>

namespace kirolane::bench {

/// What a measurement is given by the command line.
struct Inputs {
    std::string clip;      ///< 1080p30 H.264 with AAC, some 20 s
    std::string shortClip; ///< a small one
    std::string programs;  ///< folder of the other measuring programs
};

/// A measurement: its name on the command line and the rows it prints. Each runs in a process of its own.
struct Benchmark {
    const char* name;
    std::vector<Row> (*run)(const Inputs& inputs);
};

std::vector<Row> MeasureScan(const Inputs& inputs);
std::vector<Row> MeasureRows(const Inputs& inputs);
std::vector<Row> MeasureFirstFrame(const Inputs& inputs);
std::vector<Row> MeasureTwinCost(const Inputs& inputs);
std::vector<Row> MeasureStart(const Inputs& inputs);
std::vector<Row> MeasureMemory(const Inputs& inputs);
std::vector<Row> MeasureIdle(const Inputs& inputs);

inline constexpr int kRuns = 7; ///< samples of each figure, taken in turn with its reference's

} // namespace kirolane::bench
