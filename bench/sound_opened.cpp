#include "benchmarks.h"
#include "show.h"

#include "contract/exceptions.h"
#include "logic/shell/mainform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace kirolane::bench {

namespace {

constexpr int kTimes = 5;
constexpr int kClip = 6;
constexpr int kWatched = 1500;           ///< milliseconds from the opening on
constexpr int kFewest = 30;              ///< frames that the audience sees in that time, or it saw no movie
constexpr double kFrame = 1000.0 / 30.0; ///< milliseconds of the movie
constexpr int kLongest = 2;              ///< frames
constexpr double kTurn = 40.0; ///< seconds of the clip's 60 after which it goes on from its beginning

/// The longest that one picture stood before the audience while `act` was done and for a while after, in
/// whole frames, as the camera sees each a little sooner or later.
double Stand(Show& show, const std::function<void()>& act) {
    const App& app = show.Program();
    if (app.Console().QTM()->Position() > kTurn) {
        app.OpenRow(0);
        app.For(kWatched); // the start has stands of its own
    }
    show.Eye().Take();
    const Shot before = show.Eye().Newest();
    act();
    app.For(kWatched);
    double longest = 0.0;
    double since = before.milliseconds;
    int frame = before.stage.frame;
    int frames = 0;
    for (const Shot& shot : show.Eye().Take()) {
        if (!shot.stage.Shows(kClip))
            throw RuntimeException("the audience saw something else than the movie");
        longest = std::max(longest, shot.milliseconds - since);
        if (shot.stage.frame == frame)
            continue;
        frame = shot.stage.frame;
        since = shot.milliseconds;
        ++frames;
    }
    if (frames < kFewest)
        throw RuntimeException("the movie did not go on");
    return std::round(longest / kFrame);
}

} // namespace

std::vector<Row> MeasureSoundOpened(const Inputs& inputs) {
    constexpr std::array kNames{"stand at a WAV file's opening", "stand at a long MP3's opening",
                                "stand at a long ADTS file's opening", "stand at a MIDI file's opening"};
    Show show(inputs.clips + "/seek");
    const App& app = show.Program();
    app.ListSounds(inputs.clips + "/opened");
    app.OpenRow(0);
    show.UntilSeen(kClip, 60);
    Samples untouched;
    std::array<Samples, kNames.size()> stands;
    for (int run = 0; run < kTimes; ++run) {
        untouched.Add(Stand(show, [] {}));
        for (std::size_t row = 0; row < kNames.size(); ++row) {
            stands[row].Add(Stand(show, [&] { app.OpenSound(static_cast<int>(row)); }));
            app.CloseSound();
        }
    }
    std::vector<Row> rows{ReportRow("stand where nothing is opened", untouched, "frames")};
    for (std::size_t row = 0; row < kNames.size(); ++row)
        rows.push_back(
            MedianAndWorstRow(kNames[row], stands[row], stands[row], "frames", kLongest, kLongest));
    return rows;
}

} // namespace kirolane::bench
