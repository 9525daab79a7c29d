#include "soak.h"

#include "app.h"
#include "clocks.h"
#include "folders.h"

#include "contract/implicit_instance.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <vector>

#include <unistd.h>

namespace kirolane::soak {

namespace {

constexpr const char* kMovies[] = {"clip.mp4", "clip.mpg", "clip.avi", "silent.mp4", "clip.dv"};
constexpr const char* kSounds[] = {"clip.mp3", "clip.wav", "clip.mid"};
constexpr int kFirst = 60;        ///< openings after which all that is made once has been made
constexpr double kMost = 1.0;     ///< KiB an opening, of the last half
constexpr int kSettled = 3000;    ///< milliseconds after which what has been closed has gone
constexpr int kPatience = 10'000; ///< for it to have gone at the end

int CountIn(pid_t process, const char* folder) {
    std::error_code error;
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(process) + "/" + folder, error);
    return static_cast<int>(std::distance(begin(all), end(all)));
}

/// Of the program and its engines together.
struct Holdings {
    int descriptors = 0;
    int threads = 0;
    int processes = 0;
    friend bool operator==(const Holdings&, const Holdings&) = default;
};

Holdings Count() {
    std::vector<pid_t> all = bench::Engines();
    all.push_back(getpid());
    Holdings holdings;
    for (const pid_t process : all) {
        holdings.descriptors += CountIn(process, "fd");
        holdings.threads += CountIn(process, "task");
        ++holdings.processes;
    }
    return holdings;
}

/// Of a line through readings at even distances, by least squares, from one to the next.
double Slope(const std::vector<double>& readings) {
    const double middle = (static_cast<double>(readings.size()) - 1) / 2;
    double above = 0.0;
    double below = 0.0;
    for (std::size_t i = 0; i < readings.size(); ++i) {
        above += (static_cast<double>(i) - middle) * readings[i];
        below += (static_cast<double>(i) - middle) * (static_cast<double>(i) - middle);
    }
    return below == 0.0 ? 0.0 : above / below;
}

} // namespace

bool Openings(const Run& run) {
    const bench::MemoryFolder memory;
    const std::string movies = memory.MakeFiles("movies", 0);
    const std::string sounds = memory.MakeFiles("sounds", 0);
    for (const char* name : kMovies)
        std::filesystem::copy_file(run.clips + "/" + name, movies + "/" + name);
    for (const char* name : kSounds)
        std::filesystem::copy_file(run.clips + "/" + name, sounds + "/" + name);
    const bench::App app(movies);
    app.UntilScanned();
    app.ListSounds(sounds);
    Mainform& console = app.Console();

    int opened = 0;
    const auto open = [&] {
        const int number = opened++;
        if (number % 4 == 3) { // beside the movie
            app.OpenSound(number / 4 % static_cast<int>(std::size(kSounds)));
            app.Until([&] { return Instance<MusicForm>()->QTM()->Position() > 0.0; });
        } else {
            app.OpenRow(number % static_cast<int>(std::size(kMovies)));
            app.Until([&] { return console.QTM()->Position() > 0.0; });
        }
    };
    const auto closed = [&](const Holdings& wanted, int patience) {
        app.Close();
        app.CloseSound();
        const bench::StopWatch watch;
        Holdings now = Count();
        while (now != wanted && watch.Milliseconds() < patience) {
            app.For(200);
            now = Count();
        }
        return now;
    };
    while (opened < kFirst)
        open();
    const Holdings before = closed({}, kSettled);
    const int every = std::max(1, run.count / 200);
    std::vector<double> memories; // KiB
    for (int i = 0; i < run.count; ++i) {
        open();
        if (i >= run.count / 2 && i % every == 0)
            memories.push_back(1024.0 * bench::SharedOutMebibytes());
        if ((i + 1) % 1000 == 0)
            std::printf("openings: %d, %.1f MiB\n", i + 1, bench::SharedOutMebibytes());
    }
    const Holdings after = closed(before, kPatience);
    const double slope = Slope(memories) / every;
    std::printf(
        "openings: %d; descriptors %d then %d, threads %d then %d, processes %d then %d; memory of the "
        "last half %+.2f KiB an opening\n",
        run.count, before.descriptors, after.descriptors, before.threads, after.threads, before.processes,
        after.processes, slope);
    return before == after && (slope < kMost || run.count < 1000); // too few tell nothing of the slope
}

} // namespace kirolane::soak
