#include "app.h"
#include "benchmarks.h"
#include "clocks.h"

#include "contract/backend/mediaengine.h"
#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

#include <QTimer>

#include <algorithm>
#include <csignal>

namespace kirolane::bench {

namespace {

constexpr int kEnds = 9;
constexpr int kClips = 5;
constexpr int kApart = 2500; ///< milliseconds from one to the next
constexpr int kBeat = 5;     ///< milliseconds
constexpr int kAfter = 1000; ///< milliseconds for which the console is watched

/// Enough of the audience's picture to tell one from the next.
std::uint64_t Sum(MoviePlayer& player) {
    std::uint64_t sum = 0;
    player.Engine()->Frames()->Visit([&sum](const FrameView& view) {
        for (std::int32_t y = 0; y < view.height; y += 7)
            for (std::int32_t x = 0; x < view.width; x += 5)
                sum = sum * 31 + view.pixels[static_cast<std::ptrdiff_t>(y) * view.stride + x * 4];
    });
    return sum;
}

/// The engine that works most is the movie's.
pid_t MovieEngine() {
    pid_t busiest = 0;
    double most = -1.0;
    for (const pid_t engine : Engines())
        if (const double time = ProcessorMilliseconds(engine); time > most) {
            most = time;
            busiest = engine;
        }
    return busiest;
}

/// How long the event loop stands, by a timer of short beats.
class Pulse {
public:
    Pulse() {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] {
            m_longest = std::max(m_longest, m_watch.Milliseconds() - kBeat);
            m_watch = {};
        });
        m_timer.start(kBeat);
    }
    [[nodiscard]] double Longest() const { return m_longest; } ///< milliseconds

private:
    QTimer m_timer;
    StopWatch m_watch;
    double m_longest = 0.0;
};

} // namespace

std::vector<Row> MeasureEngineEnds(const Inputs& inputs) {
    const App app(inputs.clips + "/show");
    app.UntilScanned();
    app.For(3000);
    Samples pictures;
    Samples stands;
    for (int end = 0; end < kEnds; ++end) {
        app.OpenRow(end % kClips); // one after the other: a file that ends two engines in a row is given up
        app.For(kApart);
        MoviePlayer& stage = *app.Monitor().QTM();
        const Pulse pulse;
        ::kill(MovieEngine(), SIGKILL);
        const StopWatch watch;
        app.For(20); // what has been drawn before
        const std::uint64_t last = Sum(stage);
        app.Until([&] { return Sum(stage) != last; });
        pictures.Add(watch.Milliseconds());
        app.For(kAfter);
        stands.Add(pulse.Longest());
    }
    return {
        MedianAndWorstRow("end of the engine to the next picture", pictures, pictures, "ms", 500.0, 1500.0),
        MedianAndWorstRow("longest stand of the console meanwhile", stands, stands, "ms", 50.0, 50.0)};
}

} // namespace kirolane::bench
