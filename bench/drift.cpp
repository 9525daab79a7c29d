#include "app.h"
#include "benchmarks.h"

#include "contract/exceptions.h"
#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/video/rate_table.h"

#include <cmath>

namespace kirolane::bench {

namespace {

constexpr int kTimes = 10;
constexpr int kSettle = 1000;            ///< milliseconds: the read-out shows the drift at the next tick
constexpr int kBetween = 50;             ///< milliseconds between two readings
constexpr int kReadings = 20;            ///< after each command
constexpr double kFrame = 1000.0 / 30.0; ///< milliseconds
constexpr int kTurn = 40; ///< seconds of the clip's 60 after which it goes on from its beginning
constexpr int kBeginning = 5;

/// What the read-out shows, in milliseconds: how far the audience's player is ahead.
double Drift(const App& app) {
    if (!app.Console().FileOpen_Flag)
        throw RuntimeException("no clip is open");
    return 1000.0 * (app.Monitor().QTM()->Position() - app.Console().QTM()->Position());
}

/// The readings over a second from the next tick on.
Samples Settled(const App& app) {
    app.For(kSettle);
    Samples readings;
    for (int i = 0; i < kReadings; ++i) {
        readings.Add(Drift(app));
        app.For(kBetween);
    }
    return readings;
}

/// The drift after one kind of command: what it settles at each time, and the furthest single reading.
class Drifts {
public:
    explicit Drifts(const App& app) : m_app(app) {}

    void Measure(const std::function<void()>& command) {
        m_app.Deliver(command);
        Take(Settled(m_app), 0.0);
    }
    /// `before` is what the drift is to be compared with.
    void Take(const Samples& readings, double before) {
        m_settled.Add(std::abs(readings.Median() - before));
        m_furthest.Add(
            std::max(std::abs(readings.Largest() - before), std::abs(readings.Smallest() - before)));
    }
    [[nodiscard]] Row InRow(const char* name, double median, double worst) const {
        return MedianAndWorstRow(name, m_settled, m_furthest, "ms", median, worst);
    }

private:
    const App& m_app;
    Samples m_settled;
    Samples m_furthest;
};

/// A person's press on the slider, at that second.
void SlideTo(Mainform& console, std::int32_t second) {
    console.QTM_PosBar_MouseDown(0, 0);
    console.QTM_PosBar()->SetValue(second);
}

/// Keeps the clip from running out.
void StayInside(const App& app) {
    if (app.Console().QTM()->Position() < kTurn)
        return;
    app.Deliver([&] { SlideTo(app.Console(), kBeginning); });
    app.For(kSettle);
}

Row Starts(const App& app) {
    Drifts drifts(app);
    for (int i = 0; i < kTimes; ++i) {
        drifts.Measure([&] {
            app.Console().StrGrid()->SetListIndex(0);
            app.Console().StrGridDblClick_Action();
        });
        app.Close();
    }
    return drifts.InRow("drift after a start", 1.0, kFrame);
}

Row Pauses(const App& app) {
    Drifts drifts(app);
    for (int i = 0; i < kTimes; ++i) {
        StayInside(app);
        app.Deliver([&] { app.Console().QTM_PlayStatus_Action(); });
        app.For(100 + 30 * i);
        drifts.Measure([&] { app.Console().QTM_PlayStatus_Action(); });
    }
    return drifts.InRow("drift after pause and resume", kFrame, 3 * kFrame);
}

Row Slides(const App& app) {
    Drifts drifts(app);
    for (int i = 0; i < kTimes; ++i)
        drifts.Measure([&] { SlideTo(app.Console(), (13 * i) % kTurn); });
    return drifts.InRow("drift after a slider seek", kFrame, 3 * kFrame);
}

Row Jumps(const App& app) {
    Drifts drifts(app);
    for (int i = 0; i < kTimes; ++i) {
        StayInside(app);
        app.Deliver([&] { app.Console().QTM_Mark_Action(); });
        app.For(700);
        drifts.Measure([&] { app.Console().QTM_MarkSeek_Action(); });
    }
    return drifts.InRow("drift after a mark jump", kFrame, 3 * kFrame);
}

/// Up to the fastest, down to the slowest, and back to the middle.
Row Rates(const App& app) {
    Drifts drifts(app);
    const int top = static_cast<int>(kRates.size()) - 1;
    const auto step = [&](bool up, int times) {
        for (int i = 0; i < times; ++i) {
            StayInside(app);
            drifts.Measure([&] {
                if (up)
                    app.Console().SpeedUp_Action();
                else
                    app.Console().SpeedDown_Action();
            });
        }
    };
    step(true, top / 2);
    step(false, top);
    step(true, top / 2);
    return drifts.InRow("drift after a change of rate", kFrame, 3 * kFrame);
}

/// Each player moves from where it stands, so that a drift between them stays, here also one of half a
/// second.
Row Steps(const App& app) {
    Drifts drifts(app);
    for (int i = 0; i < kTimes; ++i) {
        if (i % (kTimes / 2) == 0) {
            app.Deliver([&] {
                SlideTo(app.Console(), kBeginning);
                if (i > 0)
                    app.Monitor().QTM()->SetPosition(kBeginning + 0.5);
            });
        }
        StayInside(app);
        const Samples before = Settled(app);
        app.Deliver([&] {
            if (i % 2 == 0)
                app.Console().QTM_Frame5Up_Action();
            else
                app.Console().QTM_Frame5Down_Action();
        });
        drifts.Take(Settled(app), before.Median());
    }
    return drifts.InRow("drift kept by a relative seek", kFrame, 3 * kFrame);
}

} // namespace

std::vector<Row> MeasureDrift(const Inputs& inputs) {
    const App app(inputs.clips + "/seek", Displays::Desktop);
    app.UntilScanned();
    std::vector<Row> rows{Starts(app)};
    app.OpenRow(0);
    for (const auto measure : {Pauses, Slides, Jumps, Rates, Steps})
        rows.push_back(measure(app));
    return rows;
}

} // namespace kirolane::bench
