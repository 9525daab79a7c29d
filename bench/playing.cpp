#include "app.h"
#include "bare_player.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"
#include "show.h"
#include "wall.h"

namespace kirolane::bench {

namespace {

constexpr int kOpenings = 41; ///< which scatter
constexpr int kRest = 200;    ///< milliseconds between one player's turn and the other's

constexpr Area kStage{1920, 0, 1920, 1080}; ///< the second display of the desktop

double CostOfTwins(const App& app, int row, pid_t server = 0) {
    app.OpenRow(row);
    const double cost = app.CostOfPlaying(server);
    app.Close();
    app.For(kRest);
    return cost;
}

double CostOfSingle(const App& app, BarePlayer& bare, const std::string& clip, pid_t server = 0) {
    bare.Open(clip, true);
    const double cost = app.CostOfPlaying(server);
    bare.Close();
    app.For(kRest);
    return cost;
}

} // namespace

std::vector<Row> MeasureFirstFrame(const Inputs& inputs) {
    constexpr int kClip = 8;
    const std::string folder = inputs.clips + "/rates";
    Show show(folder, Show::Look::StageAndPreview);
    const App& app = show.Program();
    Wall wall(kStage);
    BarePlayer bare(&wall);
    Samples twin;
    Samples single;
    for (int run = 0; run < kOpenings; ++run) {
        double begin = show.Eye().Now();
        app.OpenRow(0);
        show.Until([](const Shot& shot) { return shot.stage.Shows(kClip) && shot.preview.Shows(kClip); });
        twin.Add(show.Eye().Newest().milliseconds - begin);
        app.Close();
        wall.Show();
        app.For(kRest); // both engines come to rest before the other's turn
        begin = show.Eye().Now();
        bare.Open(folder + "/1.mp4", true);
        show.Until([](const Shot& shot) { return shot.stage.Shows(kClip); });
        single.Add(show.Eye().Newest().milliseconds - begin);
        bare.Close();
        wall.Hide();
        app.For(kRest);
    }
    return {RatioRow("open to first frame, twin / single", twin, single, "ms", 1.15)};
}

std::vector<Row> MeasureTwinCost(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(memory.MakeMovies("clip", 1, inputs.clip), Displays::Desktop);
    app.UntilScanned();
    const pid_t server = DisplayServer();
    Wall wall(kStage);
    BarePlayer bare(&wall);
    Samples twin;
    Samples single;
    for (int run = 0; run < kRuns; ++run) {
        twin.Add(CostOfTwins(app, 0, server));
        wall.Show();
        single.Add(CostOfSingle(app, bare, inputs.clip, server));
        wall.Hide();
    }
    return {RatioRow("processor, twin / single, per 5 s", twin, single, "ms", 1.2)};
}

std::vector<Row> MeasureInterlaced(const Inputs& inputs) {
    constexpr int kFewRuns = 3;
    const std::string folder = inputs.clips + "/fields";
    const App app(folder);
    app.UntilScanned();
    BarePlayer bare;
    bare.SetFilter("yadif=mode=send_frame:deint=interlaced");
    Samples marked;
    Samples unmarked;
    Samples single;
    for (int run = 0; run < kFewRuns; ++run) {
        marked.Add(CostOfTwins(app, 0));
        unmarked.Add(CostOfTwins(app, 1));
        single.Add(CostOfSingle(app, bare, folder + "/1.mp4"));
    }
    return {RatioRow("processor, deinterlaced / bare filter", marked, single, "ms", 1.25),
            ReportRow("the same pictures not marked", unmarked, "ms")};
}

std::vector<Row> MeasureMemory(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(memory.MakeMovies("clip", 1, inputs.clip));
    app.UntilScanned();
    app.For(3000); // the engines are made ready in the background
    Samples idle;
    idle.Add(SharedOutMebibytes());
    app.OpenRow(0);
    app.CostOfPlaying();
    Samples playing;
    playing.Add(SharedOutMebibytes());
    return {ReportRow("memory of all processes, idle", idle, "MiB"),
            ReportRow("memory of all processes, 1080p twin playing", playing, "MiB")};
}

std::vector<Row> MeasureIdle(const Inputs& /*inputs*/) {
    const MemoryFolder memory;
    const App app(memory.MakeFiles("idle", 100));
    app.UntilScanned();
    app.For(1000);
    Samples share;
    for (int run = 0; run < kRuns; ++run) {
        const double before = ProcessorMilliseconds();
        const StopWatch watch;
        app.For(2000);
        share.Add(100.0 * (ProcessorMilliseconds() - before) / watch.Milliseconds());
    }
    return {ReportRow("processor of the idle program", share, "% of one core")};
}

} // namespace kirolane::bench
