#include "app.h"
#include "benchmarks.h"
#include "clocks.h"

#include "logic/shell/mainform.h"

namespace kirolane::bench {

namespace {

constexpr int kClips = 5; ///< 1080p to 320 x 240, five frame rates
constexpr int kFew = 5;
constexpr int kMany = 300;           ///< ends with the clip that kFew ends with
constexpr double kPlayed = 0.2;      ///< seconds of each
constexpr double kMost = 1.25;       ///< times the reference
constexpr int kSettled = 2000;       ///< milliseconds after which what has been closed has gone
constexpr int kMemoryReadings = 5;   ///< of each state, as the last pictures come and go
constexpr int kBetweenReadings = 50; ///< milliseconds

Samples Memory(const App& app) {
    Samples memory;
    for (int i = 0; i < kMemoryReadings; ++i) {
        app.For(kBetweenReadings);
        memory.Add(SharedOutMebibytes());
    }
    return memory;
}

} // namespace

std::vector<Row> MeasureOpenings(const Inputs& inputs) {
    const App app(inputs.clips + "/show");
    app.UntilScanned();
    app.For(kSettled); // the players are made ready in the background
    const Samples idle = Memory(app);
    Samples opening;
    Samples after;
    int opened = 0;
    const auto openUpTo = [&](int count) {
        while (opened < count) {
            const double before = ProcessorMilliseconds();
            app.OpenRow(opened++ % kClips);
            app.Until([&] { return app.Console().QTM()->Position() > kPlayed; });
            opening.Add(ProcessorMilliseconds() - before);
            after.Add(SharedOutMebibytes());
        }
        return Memory(app);
    };
    const Samples few = openUpTo(kFew);
    const Samples many = openUpTo(kMany);
    app.Close();
    app.For(kSettled);
    return {
        RatioRow("memory, 300th / 5th opening", many, few, "MiB", kMost),
        RatioRow("memory, closed again / idle", Memory(app), idle, "MiB", kMost),
        ReportRow("processor, opening and 0.2 s of it", opening, "ms"),
        ReportRow("memory after each opening", after, "MiB"),
    };
}

} // namespace kirolane::bench
