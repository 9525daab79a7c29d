#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "contract/exceptions.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace kirolane::bench {

namespace {

constexpr int kMany = 99'999;
constexpr int kNew = 1'000;
constexpr int kIntoTheScan = 20; ///< milliseconds from the start of the scan to the press

/// Sees when the list has been painted with all rows of the new folder in it.
class RowsPainted : public QObject {
public:
    explicit RowsPainted(Mainform& console) : m_console(console) { qApp->installEventFilter(this); }
    void Reset() { m_seen = false; }
    [[nodiscard]] bool Seen() const { return m_seen; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool list = event->type() == QEvent::Paint && object->parent() != nullptr &&
                          object->parent()->objectName() == QLatin1String("StrGrid");
        m_seen = m_seen || (list && m_console.StrGrid()->ListCount() == kNew);
        return false;
    }

private:
    Mainform& m_console;
    bool m_seen = false;
};

} // namespace

std::vector<Row> MeasureFolderPress(const Inputs& inputs) {
    const MemoryFolder memory;
    const std::string many = memory.MakeFiles("many", kMany);
    const std::string fresh = memory.MakeMovies("fresh", kNew, inputs.shortClip);
    const App app(many);
    app.UntilScanned();
    Mainform& console = app.Console();
    app.Deliver([&] { console.Setting_Data.Set(line::kFirstFolder + 1, ColonPath(fresh)); });
    RowsPainted rows(console);
    Samples shown;
    for (int run = 0; run < kRuns; ++run) {
        app.Deliver([&] { console.Fold_Action(1); });
        app.For(kIntoTheScan);
        if (!console.FolderThread()->Running())
            throw RuntimeException("the scan was over before the press");
        rows.Reset();
        const StopWatch watch;
        app.Deliver([&] { console.Fold_Action(2); });
        app.Until([&] { return rows.Seen(); });
        shown.Add(watch.Milliseconds());
        app.UntilScanned();
    }
    return {PercentileRow("folder button in a scan to its rows", shown, 0.5, "ms", 100.0)};
}

} // namespace kirolane::bench
