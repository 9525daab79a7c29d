#include "app.h"
#include "bare_player.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "contract/backend/mediaengine.h"
#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <filesystem>

namespace kirolane::bench {

namespace {

constexpr int kOpenings = 41; ///< which scatter

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

double CostOfTwins(const App& app, int row) {
    app.OpenRow(row);
    const double cost = app.CostOfPlaying();
    app.Close();
    app.For(200);
    return cost;
}

double CostOfSingle(const App& app, BarePlayer& bare, const std::string& clip) {
    bare.Open(clip, true);
    const double cost = app.CostOfPlaying();
    bare.Close();
    app.For(200);
    return cost;
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
        twin.Add(CostOfTwins(app, 0));
        single.Add(CostOfSingle(app, bare, inputs.clip));
    }
    return {RatioRow("processor, twin / single, per 5 s", twin, single, "ms", 1.25)};
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
    const App app(FolderOf(memory, inputs.clip));
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
