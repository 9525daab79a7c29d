#include "audience.h"
#include "benchmarks.h"
#include "show.h"

#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

#include <X11/keysym.h>

namespace kirolane::bench {

namespace {

constexpr int kClips = 5;
constexpr int kEach = 7;       ///< changes of each way
constexpr int kPlayed = 8;     ///< frames shown of each clip, at least, before the next
constexpr int kLateFrame = 80; ///< of the first clip's 90
constexpr int kBadShown = 200; ///< milliseconds that each control lasts
constexpr double kRate = 60.0; ///< shots a second, at least

/// What the audience sees is judged as it goes; the frames of what is not looked at have gone for ever.
void Until(Show& show, Audience& audience, const std::function<bool()>& done) {
    show.Program().Until([&] {
        audience.See(show.Eye().Take());
        return done();
    });
}

/// Each way to the next clip, a number of times.
void ChangeByHand(Show& show, Audience& audience, const std::function<void(int row)>& open, Samples& delay) {
    for (int i = 0; i < kEach; ++i) {
        const int changes = audience.Changes();
        const double begin = show.Eye().Now();
        open(audience.Clip() % kClips); // the row below that of the clip, which is one more than its row
        Until(show, audience, [&] { return audience.Changes() > changes; });
        delay.Add(show.Eye().Now() - begin);
        Until(show, audience, [&] { return audience.Frame() >= kPlayed; });
    }
}

void ChangeByTick(Show& show, Audience& audience) {
    const Mainform& console = show.Program().Console();
    show.Program().Deliver([&] { show.Program().Console().ListLoopPlay_Action(); });
    const int wanted = audience.Changes() + kEach;
    Until(show, audience, [&] { return audience.Changes() == wanted || !console.FileOpen_Flag; });
    show.Program().Deliver([&] { show.Program().Console().ListLoopPlay_Action(); });
}

/// Whatever should not be seen is put before the camera; the number of shots that were found bad, by kind.
std::string Controls(Show& show) {
    const App& app = show.Program();
    std::string text;
    const auto control = [&](const char* name, const std::function<void()>& order,
                             const std::function<int(const Audience&)>& count) {
        app.Close();
        app.OpenRow(0);
        show.UntilSeen(1, kPlayed);
        show.Eye().Take();
        Audience audience(1, kClips);
        app.Deliver(order);
        app.For(kBadShown);
        app.Deliver([&] {
            app.Console().Show();
            app.Monitor().Show();
        });
        app.OpenRow(1);
        Until(show, audience, [&] { return audience.Clip() == 2; });
        if (count(audience) == 0)
            throw RuntimeException(std::string("the control went unseen: ") + name);
        text += (text.empty() ? "" : ", ") + std::string(name) + " " + std::to_string(count(audience));
    };
    const auto kind = [](Sight::Kind wanted) {
        return [wanted](const Audience& audience) { return audience.Bad(wanted); };
    };
    control(
        "curtain", [&] { app.Console().QTM_Close_Action(); }, kind(Sight::Kind::Curtain));
    control(
        "desktop", [&] { app.Monitor().Hide(); }, kind(Sight::Kind::Ground));
    control(
        "black",
        [&] {
            app.Monitor().QTM()->SetVisible(false);
            app.Monitor().DummyBack()->SetVisible(true);
        },
        kind(Sight::Kind::Black));
    control(
        "rewound", [&] { app.Console().QTM_Stop_Action(); }, &Audience::Misplaced);
    return text;
}

Row RowOf(const char* name, const Audience& audience, const std::string& controls) {
    Row row;
    row.name = name;
    row.figure = std::to_string(audience.Bad()) + " bad of " + std::to_string(audience.Shots()) + " grabs, " +
                 std::to_string(static_cast<int>(audience.ShotsPerSecond())) + "/s, " +
                 std::to_string(audience.Changes()) + " changes";
    if (audience.Bad() > 0)
        row.figure += ": " + audience.Complaints();
    row.reference = "seen: " + controls;
    row.goal = "0, >= 60/s";
    row.holds = audience.Bad() == 0 && audience.ShotsPerSecond() >= kRate;
    return row;
}

} // namespace

std::vector<Row> MeasureChangeOver(const Inputs& inputs) {
    Show show(inputs.clips + "/show");
    const App& app = show.Program();
    const std::string controls = Controls(show);
    app.Close();

    app.OpenRow(0);
    show.UntilSeen(1, kPlayed);
    show.Eye().Take();
    Audience changes(1, kClips);
    Samples byKey;
    Samples byClick;
    ChangeByHand(
        show, changes,
        [&](int row) {
            app.Deliver([&] { app.Console().StrGrid()->SetListIndex(row); });
            show.Keys().Press({XK_Return});
        },
        byKey);
    ChangeByHand(
        show, changes, [&](int row) { show.DoubleClickRow(row); }, byClick);
    ChangeByTick(show, changes);

    app.OpenRow(0);
    show.UntilSeen(1, kPlayed);
    show.Eye().Take();
    Audience repeats(1, kClips);
    repeats.ExpectRepeats(kLateFrame);
    app.Deliver([&] { app.Console().LoopPlay_Action(); });
    Until(show, repeats, [&] { return repeats.Changes() == kEach; });

    return {
        RowOf("row to row", changes, controls),
        RowOf("repeat of one", repeats, controls),
        ReportRow("first frame seen, row to row", changes.FirstFrames(), ""),
        ReportRow("first frame seen, repeat", repeats.FirstFrames(), ""),
        ReportRow("\"return\" to next picture", byKey, "ms"),
        ReportRow("double click to next picture", byClick, "ms"),
    };
}

} // namespace kirolane::bench
