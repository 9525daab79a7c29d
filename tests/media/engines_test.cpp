// Engines that end or hang at any moment, and what the players show of it: a moment of a standing picture.

#include "backends/remote/remote_media.h"
#include "box/boxed.h"
#include "engine_test.h"
#include "engines.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <csignal>
#include <filesystem>
#include <set>
#include <thread>

#include <unistd.h>

namespace kirolane::tests {

namespace {

const remote::RemoteOptions kOptions{{.audioOutput = "null"}, KIROLANE_ENGINE};

const std::string kClip = ClipPath("clip.mp4");
const std::string kSound = ClipPath("clip.wav");

} // namespace

class EnginesTest : public EngineTest {
protected:
    EnginesTest() {
        MakePlayers<remote::RemoteMedia>(kOptions);
        Media().Prepare();
        Preview().Frames()->SetSize(160, 90);
        Stage().Frames()->SetSize(320, 180);
        EXPECT_TRUE(WaitUntil([] { return Engines().size() == 2; })) << "the movie's and a spare";
    }
    void Kill(const std::string& path, int signal = SIGKILL) {
        const pid_t engine = EngineOf(path);
        ASSERT_TRUE(engine > 0 && kill(engine, signal) == 0);
    }
    /// The movie's engine is another one, in which it shows its own pictures.
    bool GoesOnIn(pid_t before) {
        return WaitUntil([&] {
            EXPECT_TRUE(Stage().Frames()->HasFrame() && Stage().Frames()->HasPicture());
            EXPECT_GT(Grey(Stage()), 1) << "never black";
            const pid_t now = EngineOf(kClip);
            return now != 0 && now != before;
        });
    }
};

struct EngineAct {
    const char* name;
    int signal;
    bool hidden;  ///< the console, and with it the preview
    double apart; ///< seconds between the twins
};

class EnginesEnd : public EnginesTest, public ::testing::WithParamInterface<EngineAct> {};

TEST_P(EnginesEnd, AndTheMovieGoesOnAtItsPlaceWithAllThatIsWantedOfIt) {
    const EngineAct& act = GetParam();
    ASSERT_TRUE(Sound().Load(kSound));
    Order(Sound(), {.running = true, .seekTo = 0.0});
    ASSERT_TRUE(LoadTwins(kClip));
    Order({{&Preview(), {.running = true, .seekTo = 1.0 + act.apart, .rate = 0.75, .volume = 0}},
           {&Stage(), {.running = true, .seekTo = 1.0, .rate = 0.75, .volume = 100}}});
    ASSERT_TRUE(Reaches(Stage(), 1.1)); // it runs
    Stage().Frames()->SetSize(320, 178);
    EXPECT_GT(Grey(Stage()), 1) << "the picture of the size before, at which nobody had looked";
    if (act.hidden)
        Preview().Frames()->SetSize(0, 0);

    CapturedStderr lines;
    const pid_t engine = EngineOf(kClip);
    const double place = Stage().Position();
    const double sound = Sound().Position();
    const auto began = std::chrono::steady_clock::now();
    const auto passed = [began] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    };
    ASSERT_EQ(kill(engine, act.signal), 0);
    ASSERT_TRUE(GoesOnIn(engine));
    EXPECT_LT(passed(), act.signal == SIGSTOP ? 2.1 : 1.0);
    ASSERT_TRUE(Reaches(Stage(), place + (act.signal == SIGSTOP ? 2.0 : 0.8)));
    EXPECT_NEAR(Stage().Position(), place + 0.75 * passed(), 0.5) << "what has passed counts";
    EXPECT_TRUE(Shows(Stage(), Stage().Position()));
    EXPECT_TRUE(WaitUntil([&] { return std::abs(Distance() + act.apart) < 0.08; }, 2.0)) << Distance();
    EXPECT_NEAR(Sound().Position(), std::min(sound + passed(), Sound().Duration()), 0.2)
        << "the other transport heard nothing of it";
    EXPECT_TRUE(WaitUntil([] { return Engines().size() == 3; })) << "there is a new spare";
    const double from = Stage().Position();
    const double then = passed();
    Kill(kSound); // whose end is nothing to the movie
    EXPECT_TRUE(Reaches(Sound(), std::min(Sound().Position() + 0.5, Sound().Duration() - 0.1)));
    EXPECT_TRUE(WaitUntil([&] { return passed() > then + 0.5; }));
    EXPECT_NEAR((Stage().Position() - from) / (passed() - then), 0.75, 0.15);
    const auto said = lines.Lines();
    ASSERT_EQ(said.size(), 2U) << "one for each";
    EXPECT_NE(said[0].find(kClip), std::string::npos) << said[0];
}

INSTANTIATE_TEST_SUITE_P(Acts, EnginesEnd,
                         ::testing::Values(EngineAct{"Killed", SIGKILL, false, 0.0},
                                           EngineAct{"Aborted", SIGABRT, false, 0.5},
                                           EngineAct{"Crashed", SIGSEGV, true, 0.0},
                                           EngineAct{"Hanging", SIGSTOP, false, 0.0}),
                         [](const auto& act) { return act.param.name; });

struct Standstill {
    const char* name;
    const char* file;
    double at = 0.0;    ///< seconds to which it was sent; 0: paused as it played
    double apart = 0.0; ///< seconds between the twins
};

class EnginesEndAtAStandstill : public EnginesTest, public ::testing::WithParamInterface<Standstill> {};

TEST_P(EnginesEndAtAStandstill, AndBothTwinsShowTheVerySamePicture) {
    const Standstill& stop = GetParam();
    const std::string path = ClipPath(stop.file);
    PlayTwins(path, 1.0);
    ASSERT_TRUE(Reaches(Stage(), 1.37));
    OrderTwins({.seekTo = {}});
    for (const double step : {0.04, 0.0})
        if (stop.at > 0.0)
            OrderTwins({.seekTo = stop.at - step});
    if (stop.apart > 0.0)
        Order(Preview(), {.seekTo = Stage().Position() + stop.apart});
    std::uint64_t surface = 0; // of the two that are shown the older
    const auto look = [&] {
        std::string pixels;
        surface = std::min(Seen(Preview()).memory.number, Seen(Stage()).memory.number);
        for (PlayerEngine* engine : {&Preview(), &Stage()})
            engine->Frames()->Visit([&pixels](const FrameView& view) {
                pixels.append(reinterpret_cast<const char*>(view.pixels),
                              view.stride * std::size_t(view.height));
            });
        return pixels;
    };
    WaitUntil([] { return false; }, 0.4); // whatever is under way
    const std::string seen = look();
    const double place = Stage().Position();
    const std::uint64_t before = Seen(Stage()).memory.number;
    Kill(path);
    ASSERT_TRUE(WaitUntil([&] { return !look().empty() && surface > before; }));
    EXPECT_FALSE(WaitUntil([&] { return look() != seen; }, 0.5));
    EXPECT_EQ(Stage().Position(), place);
    EXPECT_NEAR(Distance(), -stop.apart, 0.01);
    Preview().Frames()->SetSize(200, 100); // drawn anew, though nothing moves
    EXPECT_TRUE(WaitUntil([&] { return Seen(Preview()).width == 200; }));
    Stage().Frames()->SetSize(640, 360);
    EXPECT_TRUE(WaitUntil([&] { return Seen(Stage()).width == 640; }));
}

INSTANTIATE_TEST_SUITE_P(Stops, EnginesEndAtAStandstill,
                         ::testing::Values(Standstill{"Paused", "clip.mp4"},
                                           Standstill{"PausedFilm", "film.mp4"},
                                           Standstill{"PausedAtMany", "fast.mp4"},
                                           Standstill{"PausedBehindALateStart", "late_clock.mpg"},
                                           Standstill{"PausedWithBidirectional", "clip.vob"},
                                           Standstill{"PausedBetweenPictures", "sparse.mp4"},
                                           Standstill{"OnABoundary", "clip.mp4", 2.0},
                                           Standstill{"BetweenPictures", "clip.avi", 2.99},
                                           Standstill{"OnTheLast", "clip.mp4", 5.0},
                                           Standstill{"NearlyTogether", "clip.mp4", 0.0, 0.07},
                                           Standstill{"Apart", "clip.mp4", 0.0, 0.5}),
                         [](const auto& stop) { return stop.param.name; });

TEST_F(EnginesTest, AFileThatEndsItsEngineTwiceIsAtItsEndAndTheNextPlays) {
    PlayTwins(kClip);
    ASSERT_TRUE(Reaches(Stage(), 0.3));
    CapturedStderr lines;
    const pid_t engine = EngineOf(kClip);
    Kill(kClip);
    ASSERT_TRUE(GoesOnIn(engine));
    Kill(kClip);
    EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
    EXPECT_EQ(Stage().Position(), Stage().Duration());
    EXPECT_GT(Grey(Stage()), 1) << "the last picture stays";
    PlayTwins(ClipPath("short.mp4"));
    EXPECT_TRUE(Reaches(Stage(), 0.3));
    EXPECT_EQ(lines.Lines().size(), 2U);
}

TEST_F(EnginesTest, AFileUnderWhichTheEngineEndsIsRefusedOnceForBothTwinsAndTheNextOpens) {
    TemporaryFolder folder;
    // Sixteen gigabytes without a second packet to be found in them.
    const std::string path = folder.Write("endless.mpg", Content("stream.mpg").substr(0, 3000));
    std::filesystem::resize_file(path, std::uintmax_t(16) << 30);
    CapturedStderr lines;
    std::jthread killer([&path](const std::stop_token& stop) {
        pid_t engine = 0;
        while (engine == 0 && !stop.stop_requested())
            engine = EngineOf(path);
        kill(engine, SIGKILL);
    });
    const auto began = std::chrono::steady_clock::now();
    EXPECT_FALSE(Preview().Load(path));
    EXPECT_FALSE(Stage().Load(path));
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(2));
    PlayTwins(kClip);
    EXPECT_TRUE(Reaches(Stage(), 0.3) && Reaches(Preview(), 0.3));
    const auto said = lines.Lines();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find(path), std::string::npos) << said[0];
}

TEST_F(EnginesTest, ThePictureOfAFileThatStandsIsToldOfOnceItCounts) {
    std::array<std::atomic<bool>, 2> told{};
    Preview().Frames()->SetListener([&] { told[0] = told[0] || Preview().Frames()->HasFrame(); });
    Stage().Frames()->SetListener([&] { told[1] = told[1] || Stage().Frames()->HasFrame(); });
    ASSERT_TRUE(LoadTwins(kClip)); // and no order to play it: there is no second one
    EXPECT_TRUE(WaitUntil([&] { return told[0] && told[1]; }, 3.0)) << told[0] << told[1];
}

TEST_F(EnginesTest, AClockThatJumpsOnTheWayIsNotTheEnd) {
    PlayTwins(ClipPath("jump.mpg"));
    EXPECT_NEAR(Preview().Duration(), 3.2, 0.3);
    const auto began = std::chrono::steady_clock::now();
    EXPECT_TRUE(WaitUntil([&] { return Preview().Position() >= std::floor(Preview().Duration()); }));
    EXPECT_GT(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(2700));
    EXPECT_TRUE(Preview().AtEnd());
}

TEST_F(EnginesTest, AnEngineThatEndsOrHangsWithoutAFileCostsTheNextFileNothing) {
    CapturedStderr lines;
    for (const int signal : {SIGKILL, SIGSTOP}) {
        for (const pid_t engine : Engines())
            kill(engine, signal);
        const auto began = std::chrono::steady_clock::now();
        PlayTwins(kClip);
        EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(signal == SIGSTOP ? 4 : 2));
        EXPECT_TRUE(Reaches(Stage(), 0.3));
        Unload();
        ASSERT_TRUE(WaitUntil([] { return Engines().size() == 2; }));
    }
}

TEST_F(EnginesTest, EnginesThatEndAgainAndAgainWithoutAFileAreStartedNoMore) {
    CapturedStderr lines;
    std::set<pid_t> ended;
    EXPECT_TRUE(WaitUntil([&ended] {
        for (const pid_t engine : Engines())
            if (kill(engine, SIGKILL) == 0)
                ended.insert(engine);
        return ended.size() >= 5 && Engines().empty();
    }));
    EXPECT_FALSE(WaitUntil([] { return !Engines().empty(); }, 1.0));
    EXPECT_FALSE(Stage().Load(kClip));
    const auto said = lines.Lines();
    EXPECT_EQ(
        std::count_if(said.begin(), said.end(),
                      [](const auto& line) { return line.find("again and again") != std::string::npos; }),
        1);
    ASSERT_FALSE(said.empty());
    EXPECT_NE(said.back().find("there is no engine to play it"), std::string::npos) << said.back();
}

TEST_F(EnginesTest, AnEnginePlaysInItsBox) {
    PlayTwins(kClip);
    EXPECT_TRUE(Reaches(Stage(), 0.3) && Shows(Stage(), Stage().Position()));
    const std::string status = ReadFile("/proc/" + std::to_string(EngineOf(kClip)) + "/status");
    EXPECT_NE(status.find("Seccomp:\t2"), std::string::npos);
    ASSERT_TRUE(Sound().Load(ClipPath("clip.mid"))) << "with a SoundFont";
    Order(Sound(), {.running = true, .seekTo = 0.0});
    EXPECT_TRUE(Reaches(Sound(), 0.3));

    EndPlayers();
    EXPECT_EQ(StatusOfChild([&] {
                  TakeAway(SYS_landlock_create_ruleset);
                  TakeAway(SYS_seccomp);
                  CapturedStderr lines;
                  MakePlayers<remote::RemoteMedia>(kOptions);
                  PlayTwins(kClip);
                  EXPECT_TRUE(Reaches(Stage(), 0.3)) << "nor does it need one";
                  ASSERT_TRUE(Sound().Load(ClipPath("clip.wav")));
                  const auto said = lines.Lines();
                  ASSERT_EQ(said.size(), 1U) << "for all engines together";
                  EXPECT_NE(said[0].find("Landlock"), std::string::npos) << said[0];
                  EXPECT_NE(said[0].find("seccomp"), std::string::npos) << said[0];
              }),
              0);
}

TEST_F(EnginesTest, NoEngineOutlivesTheProgram) {
    EndPlayers();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(StatusOfChild([&ends] {
                  remote::RemoteOptions options = kOptions;
                  options.roles = {{"stage", wire::Role::Stage, ""}, {"sound", wire::Role::Sound, ""}};
                  remote::RemoteMedia media(options);
                  media.Prepare();
                  std::vector<pid_t> engines;
                  while (engines.size() < 2)
                      engines = Engines();
                  ASSERT_EQ(write(ends[1], engines.data(), 2 * sizeof(pid_t)), 2 * sizeof(pid_t));
                  kill(getpid(), SIGKILL);
              }),
              -SIGKILL);
    pid_t engines[2] = {};
    ASSERT_EQ(read(ends[0], engines, sizeof engines), sizeof engines);
    for (const pid_t engine : engines)
        EXPECT_TRUE(WaitUntil(
            [engine] {
                const std::string status = ReadFile("/proc/" + std::to_string(engine) + "/stat");
                return status.empty() || status.find(") Z") != std::string::npos;
            },
            1.0));
    close(ends[0]);
    close(ends[1]);
}

} // namespace kirolane::tests
