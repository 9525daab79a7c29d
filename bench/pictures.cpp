#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"
#include "show.h"
#include "wall.h"

#include "contract/exceptions.h"

#include <algorithm>
#include <set>

#include <poll.h>

namespace kirolane::bench {

namespace {

constexpr int kBegin = 30;  ///< frames, after which the start has settled
constexpr int kHeld = 1000; ///< milliseconds
constexpr int kAfterwards = 1000;
constexpr double kMissed = 0.01; ///< share of the frames: the camera takes part of the machine

struct Count {
    int all = 0;
    int shown = 0;
    int longest = 0; ///< missed in a row
};

/// Of the frames of that clip from the first on that was seen to the last.
Count CountFrames(const std::vector<Shot>& shots, int clip, int from, int to) {
    std::set<int> seen;
    for (const Shot& shot : shots) {
        if (!shot.stage.Shows(clip))
            throw RuntimeException("the audience saw something else than the movie");
        if (shot.stage.frame >= from && shot.stage.frame < to)
            seen.insert(shot.stage.frame);
    }
    Count count{to - from, static_cast<int>(seen.size()), 0};
    int last = from - 1;
    for (const int frame : seen) {
        count.longest = std::max(count.longest, frame - last - 1);
        last = frame;
    }
    count.longest = std::max(count.longest, to - 1 - last);
    return count;
}

Row RowOf(const char* name, const Count& count) {
    Row row;
    row.name = name;
    row.figure = std::to_string(count.shown) + " of " + std::to_string(count.all) + " frames seen, at most " +
                 std::to_string(count.longest) + " missed in a row";
    row.goal = ">= 99 %";
    row.holds = count.all > 0 && count.all - count.shown <= kMissed * count.all;
    return row;
}

/// What is seen of that row's clip while it plays for so many frames.
Count Playing(Show& show, int row, int clip, int frames) {
    show.Program().OpenRow(row);
    show.UntilSeen(clip, kBegin);
    show.Eye().Take();
    const int from = show.Eye().Newest().stage.frame + 1;
    show.UntilSeen(clip, from + frames);
    return CountFrames(show.Eye().Take(), clip, from, from + frames);
}

/// What is seen while the event loop stands still.
Count Held(Show& show, int row, int clip, int rate) {
    show.Program().OpenRow(row);
    show.UntilSeen(clip, kBegin);
    show.Eye().Take();
    const int from = show.Eye().Newest().stage.frame + 1;
    show.Program().Deliver([] { ::poll(nullptr, 0, kHeld); });
    const std::vector<Shot> shots = show.Eye().Take();
    return CountFrames(shots, clip, from, from + kHeld * rate / 1000 - 2); // begun and ended between two
}
} // namespace

std::vector<Row> MeasurePictures(const Inputs& inputs) {
    constexpr int kSeconds = 10;
    Show show(inputs.clips + "/rates");
    return {
        RowOf("pictures of 30 a second", Playing(show, 0, 8, 30 * kSeconds)),
        RowOf("pictures of 60 a second", Playing(show, 1, 9, 60 * kSeconds)),
        RowOf("30 a second, the event loop held", Held(show, 0, 8, 30)),
        RowOf("60 a second, the event loop held", Held(show, 1, 9, 60)),
    };
}

std::vector<Row> MeasureDisplay(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(memory.MakeMovies("clip", 1, inputs.clip), Displays::Desktop);
    app.UntilScanned();
    const pid_t server = DisplayServer();
    Samples idle;
    app.For(3000); // the engines are made ready in the background
    idle.Add(SharedOutMebibytes() + SharedOutMebibytes(server));
    Samples cost;
    Samples playing;
    for (int run = 0; run < kRuns; ++run) {
        app.OpenRow(0);
        cost.Add(app.CostOfPlaying(server));
        playing.Add(SharedOutMebibytes() + SharedOutMebibytes(server));
        app.Close();
        app.For(kAfterwards);
    }
    return {ReportRow("processor with the X server, per 5 s", cost, "ms"),
            ReportRow("memory with the X server, idle", idle, "MiB"),
            ReportRow("memory with the X server, playing", playing, "MiB")};
}

} // namespace kirolane::bench
