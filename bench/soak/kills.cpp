#include "soak.h"

#include "app.h"
#include "clocks.h"
#include "folders.h"

#include "contract/backend/mediaengine.h"
#include "contract/implicit_instance.h"
#include "logic/display/monitorform.h"
#include "logic/settings/settingform.h"
#include "logic/shell/mainform.h"

#include <QTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <random>
#include <thread>
#include <tuple>
#include <vector>

namespace kirolane::soak {

namespace {

constexpr int kClips = 3;        ///< of 20 s and 30 pictures a second; each picture tells its clip and number
constexpr double kLatest = 0.25; ///< seconds from an act by which the engine is killed
constexpr double kPatience = 6e3; ///< milliseconds for the movie to go on
constexpr int kLooks = 4;         ///< at its going on
constexpr double kOff = 0.4;      ///< seconds that a picture may lie from the place
constexpr double kIdleEvery =
    20e3; ///< milliseconds: five of them in a minute would end the engines for a minute

enum class Act : std::uint8_t { Opening, Seeking, NextRow, Rate, Hidden, Preferences, Pause, Volume, Count };
constexpr std::array kNames = {"opening",        "seeking",     "next row", "rate",
                               "hidden console", "preferences", "pause",    "volume"};

/// What the operator has set, as the console and the players tell it.
struct Table {
    bool open, plays, runs, muted;
    std::int32_t row, volume, stageVolume, previewVolume, rateStep;
    double rate;
    std::string file;
    [[nodiscard]] auto All() const {
        return std::tie(open, plays, runs, muted, row, volume, stageVolume, previewVolume, rateStep, rate,
                        file);
    }
};

struct Picture {
    int clip = 0; ///< 0: there is none; -1: what no clip shows
    int frame = 0;
    friend bool operator==(const Picture&, const Picture&) = default;
};

/// As desk/clips.py draws it: 16 columns, the lower half the upper one turned over.
Picture ReadPicture(MoviePlayer& player) {
    Picture seen;
    const auto frames = player.Engine()->Frames();
    if (!frames->HasFrame())
        return seen;
    frames->Visit([&seen](const FrameView& view) {
        int value = 0;
        for (int column = 0; column < 16; ++column) {
            const auto bright = [&](int quarter) {
                const int x = (2 * column + 1) * view.width / 32;
                return view.pixels[static_cast<std::ptrdiff_t>(quarter * view.height / 4) * view.stride +
                                   4 * x + 1] > 127;
            };
            if (bright(1) == bright(3)) {
                seen.clip = -1;
                return;
            }
            value |= bright(1) << column;
        }
        seen = {value & 15, value >> 4};
    });
    return seen;
}

class Evening {
public:
    Evening(const Run& run) : m_random(run.seed) {
        for (int clip = 1; clip <= kClips; ++clip)
            std::filesystem::copy_file(run.clips + "/" + std::to_string(clip) + " 番.mp4",
                                       m_folder + "/" + std::to_string(clip) + ".mp4");
        m_app = std::make_unique<bench::App>(m_folder);
        m_app->UntilScanned();
        m_app->For(2000); // the engines are made ready in the background
        m_pulse.start(100);
    }

    /// One act with an end of an engine in it. False if anything does not hold.
    bool Round(int number) {
        const auto act = static_cast<Act>(m_random() % static_cast<unsigned>(Act::Count));
        Begin(act);
        const double delay = Below(kLatest);
        std::jthread killer([this, delay] { Kill(delay); });
        Do(act);
        const bench::StopWatch since;
        Table wanted = Read();
        const double place = Stage().Position();
        m_app->Until([&] { return Look() && m_killed; });
        killer.join();
        const std::array stood = {ReadPicture(Stage()), ReadPicture(Preview())};
        const bool advanced =
            act == Act::NextRow && WaitUntil([&] { return Console().File_Number != wanted.row; });
        if (act == Act::NextRow) {
            wanted.row = (wanted.row + 1) % kClips;
            wanted.file = std::to_string(wanted.row + 1) + ".mp4";
        }
        const bool refused = !Console().FileOpen_Flag && (act == Act::Opening || advanced);
        refusals += refused ? 1 : 0;
        ends += m_ended ? 1 : 0;
        const char* fault = nullptr;
        if (!refused)
            fault = Faults(act, wanted, place, since);
        const std::array stands = {ReadPicture(Stage()), ReadPicture(Preview())};
        if (fault == nullptr && act == Act::Pause && m_ended && stood != stands) {
            std::printf("  %d: from %d and %d to %d and %d\n", number, stood[0].frame, stood[1].frame,
                        stands[0].frame, stands[1].frame);
            fault = "another picture";
        }
        if (m_foreign > 0)
            fault = "a foreign picture";
        if (fault != nullptr)
            std::printf("  %d: %s, signal %d after %.0f ms: %s\n", number,
                        kNames[static_cast<std::size_t>(act)], m_signal.load(), 1e3 * delay, fault);
        End(act);
        return fault == nullptr;
    }

    int refusals = 0;     ///< of files whose engine was killed while it opened them
    int ends = 0;         ///< of engines that held the file
    double longest = 0.0; ///< milliseconds from the end to the picture at its place

private:
    Mainform& Console() { return m_app->Console(); }
    MoviePlayer& Stage() { return *m_app->Monitor().QTM(); }
    MoviePlayer& Preview() { return *Console().QTM(); }
    double Below(double limit) { return std::uniform_real_distribution(0.0, limit)(m_random); }

    /// True; takes notice of what no clip of this round shows.
    bool Look() {
        const Picture seen = ReadPicture(Stage());
        m_foreign +=
            seen.clip == 0 || seen.clip == m_before || seen.clip == m_now || seen.clip == m_after ? 0 : 1;
        return true;
    }
    bool WaitUntil(const std::function<bool()>& holds) {
        const bench::StopWatch watch;
        bool held = false;
        m_app->Until([&] { return Look() && ((held = holds()) || watch.Milliseconds() > kPatience); });
        return held;
    }
    void Deliver(const std::function<void()>& handler) {
        m_app->Deliver(handler);
        Look();
    }
    void Seek(std::int32_t second) {
        Deliver([&] {
            Console().QTM_PosBar_MouseDown(0, 0);
            Console().QTM_PosBar()->SetValue(second);
        });
    }
    void Open(std::int32_t row) {
        Deliver([&] {
            Console().StrGrid()->SetListIndex(row);
            Console().StrGridDblClick_Action();
        });
    }

    /// Another movie than that of the last round: a file that ends its engine twice within 10 s is at its
    /// end.
    void Begin(Act act) {
        const int row = (std::max(0, Console().File_Number) + 1) % kClips;
        m_before = m_after;
        m_now = row + 1;
        m_after = act == Act::NextRow ? (row + 1) % kClips + 1 : m_now;
        m_foreign = 0;
        if (act == Act::Opening)
            return;
        if (Console().List_Flag != (act == Act::NextRow))
            Deliver([&] { Console().ListLoopPlay_Action(); });
        Open(row);
        WaitUntil([&] { return ReadPicture(Stage()).clip == m_now; });
        m_before = m_now;
        if (act == Act::NextRow)
            Seek(19);
    }
    void Do(Act act) {
        switch (act) {
        case Act::Opening:
            Open(m_now - 1);
            break;
        case Act::Seeking:
            Seek(static_cast<std::int32_t>(Below(12.0)));
            break;
        case Act::Rate:
            Deliver([&] { Console().Rate()->SetValue(static_cast<std::int32_t>(Below(11.0))); });
            break;
        case Act::Hidden:
            Deliver([&] { Console().AltX_Action(); });
            break;
        case Act::Preferences:
            Deliver([&] { Console().SettingFormShow_Action(); });
            break;
        case Act::Pause:
            Deliver([&] { Console().QTM_PlayStatus_Action(); });
            break;
        case Act::Volume:
            Deliver([&] {
                Below(1.0) < 0.3   ? Console().Mute_Func()
                : Below(1.0) < 0.5 ? Console().VolumeUp_Action()
                                   : Console().VolumeDown_Action();
            });
            break;
        default:
            break;
        }
    }
    void End(Act act) {
        if (act == Act::Hidden)
            Deliver([&] { Console().AltX_Action(); });
        if (act == Act::Preferences)
            Deliver([] { Instance<SettingForm>()->Close(); });
    }

    Table Read() {
        const Mainform& console = Console();
        return {console.FileOpen_Flag,
                console.Play_Flag,
                Stage().Running(),
                console.Mute_Flag,
                console.File_Number,
                console.Volume_Flag,
                Stage().Volume(),
                Preview().Volume(),
                console.Rate()->Value(),
                Stage().Rate(),
                console.FileLabel()->Caption()};
    }
    const char* Faults(Act act, const Table& wanted, double place, const bench::StopWatch& since) {
        const auto near = [&](MoviePlayer& player) {
            const Picture seen = ReadPicture(player);
            return seen.clip == m_after && std::abs(seen.frame / 30.0 - player.Position()) < kOff;
        };
        const bench::StopWatch watch;
        if (!WaitUntil([&] { return HeldByAnother() && near(Stage()); }))
            return "no picture at its place";
        longest = std::max(longest, watch.Milliseconds());
        if (act != Act::Hidden && !WaitUntil([&] { return near(Preview()); }))
            return "no picture at its place in the preview";
        if (Read().All() != wanted.All())
            return "the state has changed";
        if (act != Act::NextRow && act != Act::Opening) {
            const double passed = wanted.runs ? wanted.rate * since.Milliseconds() / 1e3 : 0.0;
            if (std::abs(Stage().Position() - place - passed) > 0.8)
                return "not at its place";
        }
        for (int look = 0; look < kLooks; ++look) // the first may fall into the return itself
            if (GoesOn(wanted))
                return nullptr;
        return "not at its rate";
    }
    /// The place and the picture move as they should, over a while.
    bool GoesOn(const Table& wanted) {
        const double from = Stage().Position();
        const int frame = ReadPicture(Stage()).frame;
        const bench::StopWatch watch;
        WaitUntil([&] { return watch.Milliseconds() > 300; });
        const double moved = wanted.runs ? wanted.rate * watch.Milliseconds() / 1e3 : 0.0;
        return std::abs(Stage().Position() - from - moved) < 0.15 &&
               (ReadPicture(Stage()).frame > frame) == wanted.runs;
    }

    /// On a thread of its own: the engine that holds a movie, or now and then any.
    void Kill(double delay) {
        m_killed = m_ended = false;
        timespec left{0, static_cast<long>(delay * 1e9)};
        clock_nanosleep(CLOCK_MONOTONIC, 0, &left, nullptr);
        std::vector<pid_t> engines = bench::Engines();
        std::erase_if(engines, [this](pid_t engine) { return !HoldsMovie(engine); });
        m_ended = !engines.empty();
        constexpr std::array kinds = {SIGKILL, SIGSEGV, SIGABRT, SIGKILL, SIGSEGV, SIGABRT, SIGKILL, SIGSTOP};
        m_signal = kinds[static_cast<std::size_t>(delay * 1e6) % kinds.size()];
        if (engines.empty() && m_idle.Milliseconds() > kIdleEvery) {
            m_idle = {};
            engines = bench::Engines();
        }
        if (!engines.empty())
            ::kill(m_victim = engines.front(), m_signal);
        m_killed = true;
        m_app->Wake();
    }
    [[nodiscard]] bool HeldByAnother() const {
        const std::vector<pid_t> engines = bench::Engines();
        return std::any_of(engines.begin(), engines.end(),
                           [this](pid_t engine) { return engine != m_victim && HoldsMovie(engine); });
    }
    [[nodiscard]] bool HoldsMovie(pid_t engine) const {
        std::error_code error;
        for (const auto& entry :
             std::filesystem::directory_iterator("/proc/" + std::to_string(engine) + "/fd", error))
            if (std::filesystem::read_symlink(entry.path(), error).native().starts_with(m_folder))
                return true;
        return false;
    }

    std::mt19937 m_random;
    bench::MemoryFolder m_memory;
    const std::string m_folder = m_memory.MakeFiles("movies", 0);
    std::unique_ptr<bench::App> m_app;
    QTimer m_pulse; ///< so that a wait ends where nothing happens
    std::atomic<bool> m_killed = false;
    std::atomic<bool> m_ended = false; ///< an engine that held the movie
    std::atomic<int> m_signal = 0;
    std::atomic<pid_t> m_victim = 0;          ///< killed last
    bench::StopWatch m_idle;                  ///< since an engine without a movie was killed
    int m_before = 0, m_now = 0, m_after = 0; ///< clips that may be seen
    int m_foreign = 0;                        ///< looks at anything else
};

} // namespace

bool Kills(const Run& run) {
    Evening evening(run);
    int faults = 0;
    for (int number = 0; number < run.count; ++number) {
        faults += evening.Round(number) ? 0 : 1;
        if ((number + 1) % 100 == 0 || number + 1 == run.count)
            std::printf("kills: %d rounds, seed %u; %d under an open movie, %d files refused in their "
                        "opening, longest to "
                        "the picture %.2f s, %d rounds at fault\n",
                        number + 1, run.seed, evening.ends, evening.refusals, evening.longest / 1e3, faults);
    }
    return faults == 0;
}

} // namespace kirolane::soak
