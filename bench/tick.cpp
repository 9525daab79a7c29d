#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "logic/shell/mainform.h"

#include <filesystem>

namespace kirolane::bench {

namespace {
constexpr int kTicks = 3000;
constexpr int kFiles = 99'999;
constexpr int kBetween = 5; ///< milliseconds, so that the movie plays on and its end comes now and then
} // namespace

std::vector<Row> MeasureTick(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(memory.MakeMovies("many", kFiles, inputs.shortClip));
    Mainform& console = app.Console();
    app.UntilScanned();
    if (console.File_Count != kFiles)
        throw RuntimeException("the scan missed files");
    app.OpenRow(0);
    app.Deliver([&] { console.LoopPlay_Action(); });
    Samples work;
    for (int i = 0; i < kTicks; ++i) {
        const StopWatch watch;
        app.Deliver([&] { console.TimeTimer_Action(); });
        work.Add(watch.Milliseconds());
        app.For(kBetween);
    }
    if (!console.Play_Flag)
        throw RuntimeException("the movie did not play on");
    return {PercentileRow("work of the tick, 99th percentile", work, 0.99, "ms", 1.0)};
}

} // namespace kirolane::bench
