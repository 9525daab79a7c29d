#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "logic/shell/mainform.h"

#include <filesystem>

namespace kirolane::bench {

namespace {

/// Opens and closes row 0, handlers and showing, until the loop is idle again.
double OpenAndClose(const App& app) {
    Mainform& console = app.Console();
    const StopWatch watch;
    app.Deliver([&] {
        console.StrGrid()->SetListIndex(0);
        console.StrGridDblClick_Action();
    });
    app.Deliver([&] { console.QTM_Close_Action(); });
    return watch.Milliseconds();
}

void Show(const App& app, const std::string& folder) {
    Mainform& console = app.Console();
    app.Deliver([&] {
        console.Setting_Data.Set(22, folder);
        console.FolderThread()->Kill();
        console.FolderThread()->Run();
    });
    app.UntilScanned();
}

} // namespace

std::vector<Row> MeasureRows(const Inputs& inputs) {
    const MemoryFolder memory;
    // All of these files are listed; the first by name is a real clip.
    const std::string many = memory.MakeMovies("many", 99'999, inputs.shortClip);
    const std::string few = memory.MakeMovies("few", 26, inputs.shortClip);
    const App app(few);
    app.UntilScanned();
    Samples inMany;
    Samples inFew;
    for (int run = 0; run < kRuns; ++run) {
        Show(app, ColonPath(many));
        inMany.Add(OpenAndClose(app));
        Show(app, ColonPath(few));
        inFew.Add(OpenAndClose(app));
    }
    return {DifferenceRow("open and close, 99,999 / 26 rows", inMany, inFew, "ms", 20.0)};
}

} // namespace kirolane::bench
