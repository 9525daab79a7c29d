#include "bare_player.h"
#include "benchmarks.h"
#include "show.h"

#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

#include <cmath>

#include <X11/keysym.h>

namespace kirolane::bench {

namespace {

constexpr int kTimes = 12;
constexpr int kClip = 6;
constexpr double kRate = 30.0; ///< frames a second of the clip
constexpr int kRest = 400;     ///< milliseconds in which a player comes to rest, or plays
constexpr double kStep = 5.0;  ///< seconds of the key
constexpr int kStepFrames = 150;
constexpr int kExact = 5; ///< frames that a step may differ by while it plays

/// The second that the i-th seek starts from: it ends at another distance from a key frame each time.
double Begin(int i) {
    return 4.0 + i * (2.0 + 1.0 / 3.0 + 1.0 / kRate);
}

int FrameAt(double seconds) {
    return static_cast<int>(std::floor(seconds * kRate + 0.5));
}

void PutBoth(const App& app, double seconds) {
    app.Deliver([&] {
        app.Console().QTM()->SetPosition(seconds);
        app.Monitor().QTM()->SetPosition(seconds);
    });
}

void SetPlaying(const App& app, bool playing) {
    if (app.Console().Play_Flag != playing)
        app.Deliver([&] { app.Console().QTM_PlayStatus_Action(); });
    app.For(kRest);
}

/// Frames that come on after the key.
Row Pauses(Show& show) {
    const App& app = show.Program();
    Samples frames;
    for (int i = 0; i < kTimes; ++i) {
        SetPlaying(app, true);
        PutBoth(app, Begin(i));
        app.For(kRest + 7 * i);
        show.Eye().Take();
        const Shot before = show.Eye().Newest();
        show.Keys().Press({XK_space});
        app.Until([&] { return !app.Console().Play_Flag; });
        app.For(kRest);
        const int resting = show.Eye().Newest().stage.frame;
        show.Eye().Take();
        app.For(kRest);
        for (const Shot& shot : show.Eye().Take())
            if (shot.stage.frame != resting || !shot.stage.Shows(kClip))
                throw RuntimeException("the picture did not come to rest");
        frames.Add(resting - before.stage.frame);
    }
    return MedianAndWorstRow("frames shown after the pause key", frames, frames, "", 2, 2);
}

/// From the key to the first picture of where it leads.
double StepByKey(Show& show, int& frame) {
    const App& app = show.Program();
    show.Eye().Take();
    const int from = show.Eye().Newest().stage.frame;
    const double begin = show.Eye().Now();
    show.Keys().Press({XK_Control_L, XK_Alt_L, XK_Right});
    Shot arrived;
    show.Until([&](const Shot& shot) {
        arrived = shot;
        return shot.stage.Shows(kClip) && shot.stage.frame > from + kStepFrames / 2;
    });
    // The newest may have been taken a little later than the first of that place.
    for (const Shot& shot : show.Eye().Take()) {
        if (shot.stage.frame > from + kStepFrames / 2) {
            arrived = shot;
            break;
        }
    }
    frame = arrived.stage.frame;
    if (std::abs(frame - from - kStepFrames) > kExact)
        throw RuntimeException("the key led from frame " + std::to_string(from) + " to " +
                               std::to_string(frame));
    app.For(kRest);
    return arrived.milliseconds - begin;
}

/// Each player takes its turn alone: the other is halted.
Row Steps(Show& show, BarePlayer& bare, bool playing) {
    const App& app = show.Program();
    Samples shown;
    Samples alone;
    for (int i = 0; i < kTimes; ++i) {
        int frame = 0;
        SetPlaying(app, playing);
        PutBoth(app, Begin(i));
        app.For(kRest);
        shown.Add(StepByKey(show, frame));
        SetPlaying(app, false);

        const double target = frame / kRate;
        bare.Seek(target - kStep, FrameAt(target - kStep));
        bare.SetRunning(playing);
        app.For(kRest);
        alone.Add(bare.Seek(target, frame));
        bare.SetRunning(false);
    }
    return RatioRow(playing ? "5 s key, playing / bare seek" : "5 s key, halted / bare seek", shown, alone,
                    "ms", 1.5);
}

} // namespace

std::vector<Row> MeasureKeys(const Inputs& inputs) {
    Show show(inputs.clips + "/seek");
    show.Program().OpenRow(0);
    show.UntilSeen(kClip, 1);
    std::vector<Row> rows{Pauses(show)};
    BarePlayer bare;
    bare.Open(inputs.clips + "/seek/1.mp4", false);
    rows.push_back(Steps(show, bare, true));
    rows.push_back(Steps(show, bare, false));
    return rows;
}

} // namespace kirolane::bench
