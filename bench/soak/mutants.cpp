#include "soak.h"

#include "app.h"
#include "clocks.h"
#include "folders.h"

#include "contract/backend/mediaengine.h"
#include "contract/implicit_instance.h"
#include "logic/display/monitorform.h"
#include "logic/lists/media_types.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace kirolane::soak {

namespace {

constexpr int kGoodEvery = 10;
constexpr int kGoodFrames = 10;  ///< of counted.mp4, each brighter than the one before
constexpr int kPlayed = 40;      ///< milliseconds of each mutant before it is sought in, and again after
constexpr double kLongest = 5e3; ///< milliseconds that the console may stand

std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A file of that list.
struct Kind {
    bool sound;
    std::int32_t row;
    std::string file;
    std::string content; ///< of a good one
};

/// The lists show a file for each extension, the movies and behind them the good one to be counted.
class Stand {
public:
    explicit Stand(const std::string& clips) : m_folder(m_memory.MakeFiles("movies", 0)) {
        const std::map<std::string, std::string> borrowed = {
            {".moov", ".mov"}, {".divx", ".avi"}, {".mpe", ".mpg"}, {".m2a", ".mp2"}};
        const auto add = [&](const auto& types, bool sound, const std::string& folder) {
            for (std::int32_t row = 0; row < static_cast<std::int32_t>(std::size(types)); ++row) {
                const std::string extension(types[row].extension);
                const auto other = borrowed.find(extension);
                const std::string from = other == borrowed.end() ? extension : other->second;
                kinds.push_back({sound, row, folder + "/" + std::to_string(10 + row) + extension,
                                 Read(clips + "/clip" + from)});
                std::ofstream(kinds.back().file) << kinds.back().content;
            }
        };
        add(kMovieTypes, false, m_folder);
        add(kSoundTypes, true, sounds);
        std::filesystem::copy_file(clips + "/counted.mp4", m_folder + "/99.mp4");
        app = std::make_unique<bench::App>(m_folder);
        app->UntilScanned();
        app->ListSounds(sounds);
    }

    /// A handler, and how long it held the console.
    void Deliver(const std::function<void()>& handler) {
        const bench::StopWatch watch;
        app->Deliver(handler);
        slowest = std::max(slowest, watch.Milliseconds());
    }
    bool Open(bool sound, std::int32_t row) {
        Mainform& console = app->Console();
        Deliver([&] {
            (sound ? console.mStrGrid() : console.StrGrid())->SetListIndex(row);
            if (sound)
                console.mStrGridDblClick_Action();
            else
                console.StrGridDblClick_Action();
        });
        return sound ? console.mFileOpen_Flag : console.FileOpen_Flag;
    }
    /// As a press on the slider, at a second.
    void Seek(bool sound, std::int32_t second) {
        const auto press = [second](auto& form) {
            form.QTM_PosBar_MouseDown(0, 0);
            form.QTM_PosBar()->SetValue(second);
        };
        Deliver([&] { sound ? press(*Instance<MusicForm>()) : press(app->Console()); });
    }
    /// The pictures that the audience sees of the good movie.
    int PlayGood() {
        std::set<int> greys;
        if (!Open(false, std::size(kMovieTypes)))
            return 0;
        MoviePlayer& stage = *app->Monitor().QTM();
        const bench::StopWatch watch;
        app->Until([&] {
            stage.Engine()->Frames()->Visit([&greys](const FrameView& view) {
                const std::ptrdiff_t middle = static_cast<std::ptrdiff_t>(view.height / 2) * view.stride;
                const int level = (view.pixels[middle + view.width / 2 * 4 + 1] + 10) / 20;
                if (level == 1 || !greys.empty()) // up to the first one stays what was seen before
                    greys.insert(level);
            });
            return stage.Engine()->AtEnd() || !stage.Running() || watch.Milliseconds() > kLongest;
        });
        return static_cast<int>(greys.size());
    }

private:
    bench::MemoryFolder m_memory;
    std::string m_folder;

public:
    const std::string sounds = m_memory.MakeFiles("sounds", 0);
    std::vector<Kind> kinds;
    std::unique_ptr<bench::App> app;
    double slowest = 0.0;
};

/// Bytes changed, lost, doubled or put in between; near the beginning, where the headers are, or anywhere.
std::string Mutated(std::string content, std::mt19937& random) {
    const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    const std::size_t reach = std::min<std::size_t>(content.size(), std::size_t(64) << 2 * below(12));
    for (std::size_t change = 1 + below(12); change > 0 && content.size() > 16; --change) {
        const std::size_t place = below(std::min(reach, content.size()));
        const std::size_t size = std::min(content.size() - place, below(64) << below(6));
        switch (below(7)) {
        case 0:
            content.erase(place, size);
            break;
        case 1:
            content.insert(place, content.substr(below(content.size()), size));
            break;
        case 2:
            content.replace(place, size, size, static_cast<char>(below(2) == 0 ? 0 : 255));
            break;
        case 3:
            content.resize(below(8) == 0 ? place : content.size());
            break;
        default:
            for (std::size_t i = 0; i < 1 + size / 8 && place + i < content.size(); ++i)
                content[place + i] = static_cast<char>(random());
        }
    }
    return content;
}

} // namespace

bool Mutants(const Run& run) {
    Stand stand(run.clips);
    std::mt19937 random(run.seed);
    std::set<pid_t> engines;
    int opened = 0;
    int good = 0;
    int whole = 0;
    const std::size_t kept = bench::Engines().size();
    const auto ended = [&] {
        const std::vector<pid_t> now = bench::Engines();
        engines.insert(now.begin(), now.end());
        return engines.size() - now.size();
    };
    std::size_t ends = ended();
    std::printf("mutants: %d of %zu extensions, seed %u, %zu engines\n", run.count, stand.kinds.size(),
                run.seed, kept);
    for (int i = 0; i < run.count; ++i) {
        if (i % kGoodEvery == kGoodEvery - 1) {
            ++good;
            const int frames = stand.PlayGood();
            whole += frames == kGoodFrames ? 1 : 0;
            if (frames != kGoodFrames)
                std::printf("  %d: the good file showed %d pictures\n", i, frames);
        } else {
            const Kind& kind = stand.kinds[random() % stand.kinds.size()];
            const std::string content = Mutated(kind.content, random);
            std::filesystem::remove(kind.file); // who still reads it, reads the old one
            std::ofstream(kind.file, std::ios::binary) << content;
            const double slowest = stand.slowest;
            if (stand.Open(kind.sound, kind.row)) {
                ++opened;
                stand.app->For(kPlayed);
                stand.Seek(kind.sound, static_cast<std::int32_t>(random() % 5));
                stand.app->For(kPlayed);
            }
            if (ended() > ends || stand.slowest > std::max(slowest, kLongest)) {
                ends = ended();
                const std::string name = "mutant-" + std::to_string(run.seed) + "-" + std::to_string(i) +
                                         std::filesystem::path(kind.file).extension().string();
                std::ofstream(name, std::ios::binary) << content;
                std::printf("  %s: ended its engine, or took %.1f s\n", name.c_str(), stand.slowest / 1e3);
            }
        }
        if ((i + 1) % 1000 == 0 || i + 1 == run.count)
            std::printf(
                "mutants: %d opened %d, engines that ended %zu, good files whole %d of %d, the longest "
                "stand of the console %.2f s\n",
                i + 1, opened, ended(), whole, good, stand.slowest / 1e3);
    }
    return whole == good && stand.slowest < kLongest;
}

} // namespace kirolane::soak
