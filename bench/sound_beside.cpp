#include "app.h"
#include "benchmarks.h"
#include "folders.h"

#include "contract/exceptions.h"
#include "logic/shell/mainform.h"

#include <filesystem>

namespace kirolane::bench {

std::vector<Row> MeasureSoundBeside(const Inputs& inputs) {
    const MemoryFolder memory;
    const std::string folder = memory.MakeFiles("clip", 0);
    std::filesystem::copy_file(inputs.clip, folder + "/Clip.mp4");
    const App app(folder);
    app.UntilScanned();
    const Mainform& console = app.Console();
    app.ListSounds(inputs.clips + "/sound");
    Samples both;
    Samples movie;
    for (int run = 0; run < kRuns; ++run) {
        app.OpenRow(0);
        movie.Add(app.CostOfPlaying());
        app.Close();
        app.OpenRow(0);
        app.OpenSound(0);
        both.Add(app.CostOfPlaying());
        if (!console.mPlay_Flag || !console.Play_Flag)
            throw RuntimeException("the movie and the sound do not play at once");
        app.CloseSound();
        app.Close();
    }
    return {RatioRow("processor, movie and sound / movie", both, movie, "ms", 1.15)};
}

} // namespace kirolane::bench
