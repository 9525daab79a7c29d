#include "app.h"
#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "platform/exceptions.h"
#include "settings/setting_lines.h"
#include "shell/mainform.h"

#include <filesystem>

namespace kirolane::bench {

namespace {
constexpr int kSettle = 1000;           ///< milliseconds: the start has a cost of its own
constexpr int kPlayMilliseconds = 5000; ///< of each sample

double Playing(const App& app) {
    app.For(kSettle);
    const double before = ProcessorMilliseconds();
    app.For(kPlayMilliseconds);
    return ProcessorMilliseconds() - before;
}
} // namespace

std::vector<Row> MeasureSoundBeside(const Inputs& inputs) {
    const MemoryFolder memory;
    const std::string folder = memory.MakeFiles("clip", 0);
    std::filesystem::copy_file(inputs.clip, folder + "/Clip.mp4");
    const App app(folder);
    app.UntilScanned();
    Mainform& console = app.Console();
    app.Deliver([&] {
        console.Setting_Data.Set(line::kFirstSoundFolder, ColonPath(inputs.clips + "/sound"));
        console.mFold_Action(1);
    });
    app.Until([&] { return !console.mFolderThread()->Running(); });
    Samples both;
    Samples movie;
    for (int run = 0; run < kRuns; ++run) {
        app.OpenRow(0);
        movie.Add(Playing(app));
        app.Close();
        app.OpenRow(0);
        app.Deliver([&] {
            console.mStrGrid()->SetListIndex(0);
            console.mStrGridDblClick_Action();
        });
        both.Add(Playing(app));
        if (!console.mPlay_Flag || !console.Play_Flag)
            throw RuntimeException("the movie and the sound do not play at once");
        app.Deliver([&] { console.mQTM_Close_Action(); });
        app.Close();
    }
    return {RatioRow("processor, movie and sound / movie", both, movie, "ms", 1.15)};
}

} // namespace kirolane::bench
