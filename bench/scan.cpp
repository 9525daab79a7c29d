#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "logic/shell/mainform.h"

#include <QTimer>

#include <algorithm>

namespace kirolane::bench {

namespace {

constexpr int kMany = 99'999;
constexpr int kFew = 9'999;

/// What an event meets while other work is done: the longest gap between two beats of a 1 ms timer.
class Heartbeat {
public:
    Heartbeat() {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { Beat(); });
    }
    void Start() {
        m_longest = 0;
        m_since = StopWatch();
        m_timer.start();
    }
    double Stop() {
        m_timer.stop();
        Beat();
        return m_longest;
    }

private:
    void Beat() {
        m_longest = std::max(m_longest, m_since.Milliseconds());
        m_since = StopWatch();
    }

    QTimer m_timer;
    StopWatch m_since;
    double m_longest = 0;
};

double Scan(const App& app, const std::string& folder) {
    Mainform& console = app.Console();
    const StopWatch watch;
    app.Deliver([&] {
        console.Setting_Data.Set(22, folder);
        console.FolderThread()->Kill();
        console.FolderThread()->Run();
    });
    app.UntilScanned();
    return watch.Milliseconds();
}

} // namespace

std::vector<Row> MeasureScan(const Inputs& /*inputs*/) {
    const MemoryFolder memory;
    const std::string many = memory.MakeFiles("many", kMany);
    const std::string few = memory.MakeFiles("few", kFew);
    const App app(few);
    app.UntilScanned();

    Samples scanMany;
    Samples scanFew;
    Samples bare;
    Samples gap;
    Samples jitter;
    Heartbeat heart;
    for (int run = 0; run < kRuns; ++run) {
        heart.Start();
        scanMany.Add(Scan(app, ColonPath(many)));
        gap.Add(heart.Stop());
        if (app.Console().File_Count != (kMany + 1) / 2)
            throw RuntimeException("the scan missed files");
        const StopWatch watch;
        const auto names = BareReading(many);
        bare.Add(watch.Milliseconds());
        if (names.size() != kMany)
            throw RuntimeException("the bare reading missed files");
        heart.Start();
        app.For(static_cast<int>(scanMany.Median()));
        jitter.Add(heart.Stop());
        scanFew.Add(Scan(app, ColonPath(few)));
    }
    return {
        RatioRow("scan 99,999 / bare reading", scanMany, bare, "ms", 1.5),
        RatioRow("scan 99,999 / scan 9,999", scanMany, scanFew, "ms", 12.0),
        LimitRow("longest gap in a scan", gap, jitter, "ms", 16.0),
    };
}

} // namespace kirolane::bench
