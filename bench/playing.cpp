#include "app.h"
#include "bare_player.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "display/monitorform.h"
#include "platform/backend/mediaengine.h"
#include "shell/mainform.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <filesystem>

namespace kirolane::bench {

namespace {

constexpr int kOpenings = 41;           ///< which scatter
constexpr int kPlayMilliseconds = 5000; ///< of each sample of processor time

/// Sees when a player's widget has painted a picture of the file now open.
class FirstPaints : public QObject {
public:
    FirstPaints(MoviePlayer& preview, MoviePlayer& stage) : m_preview(preview), m_stage(stage) {
        qApp->installEventFilter(this);
    }
    void Reset() { m_previewSeen = m_stageSeen = false; }
    [[nodiscard]] bool Both() const { return m_previewSeen && m_stageSeen; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && object->objectName() == QLatin1String("QTM")) {
            const auto* widget = static_cast<const QWidget*>(object);
            if (widget->window()->objectName() == QLatin1String("Mainform"))
                m_previewSeen = m_previewSeen || m_preview.Engine()->Frames()->HasFrame();
            else
                m_stageSeen = m_stageSeen || m_stage.Engine()->Frames()->HasFrame();
        }
        return false;
    }

private:
    MoviePlayer& m_preview;
    MoviePlayer& m_stage;
    bool m_previewSeen = false;
    bool m_stageSeen = false;
};

/// A folder in memory that holds the clip alone.
std::string FolderOf(const MemoryFolder& memory, const std::string& clip) {
    const std::string folder = memory.MakeFiles("clip", 0);
    std::filesystem::copy_file(clip, folder + "/Clip.mp4");
    return folder;
}

} // namespace

std::vector<Row> MeasureFirstFrame(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(FolderOf(memory, inputs.clip));
    app.UntilScanned();
    BarePlayer bare;
    FirstPaints paints(*app.Console().QTM(), *Instance<MonitorForm>()->QTM());
    Samples twin;
    Samples single;
    for (int run = 0; run < kOpenings; ++run) {
        paints.Reset();
        const StopWatch watch;
        app.OpenRow(0);
        app.Until([&] { return paints.Both(); });
        twin.Add(watch.Milliseconds());
        app.Close();
        app.For(200); // both engines come to rest before the other's turn
        single.Add(bare.Open(inputs.clip, true));
        bare.Close();
        app.For(200);
    }
    return {RatioRow("open to first frame, twin / single", twin, single, "ms", 1.3)};
}

std::vector<Row> MeasureTwinCost(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(FolderOf(memory, inputs.clip));
    app.UntilScanned();
    BarePlayer bare;
    Samples twin;
    Samples single;
    for (int run = 0; run < kRuns; ++run) {
        app.OpenRow(0);
        app.For(1000); // the start has a cost of its own
        double before = ProcessorMilliseconds();
        app.For(kPlayMilliseconds);
        twin.Add(ProcessorMilliseconds() - before);
        app.Close();
        app.For(200);
        bare.Open(inputs.clip, true);
        app.For(1000);
        before = ProcessorMilliseconds();
        app.For(kPlayMilliseconds);
        single.Add(ProcessorMilliseconds() - before);
        bare.Close();
        app.For(200);
    }
    return {RatioRow("processor, twin / single, per 5 s", twin, single, "ms", 1.8)};
}

std::vector<Row> MeasureMemory(const Inputs& inputs) {
    const MemoryFolder memory;
    const App app(FolderOf(memory, inputs.clip));
    app.UntilScanned();
    app.OpenRow(0);
    app.For(kPlayMilliseconds);
    Samples peak;
    peak.Add(PeakMebibytes());
    return {ReportRow("peak memory, 1080p twin playing", peak, "MiB")};
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
