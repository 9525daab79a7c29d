// Engines that end or hang at any moment, and what the players show of it: a moment of a standing picture.

#include "backends/remote/remote_media.h"
#include "box/boxed.h"
#include "engine_test.h"
#include "engines.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include <unistd.h>

namespace kirolane::tests {

namespace {

const remote::RemoteOptions kOptions{{.audioOutput = "null"}, KIROLANE_ENGINE};

const std::string kClip = ClipPath("clip.mp4");

} // namespace

class EnginesTest : public EngineTest {
protected:
    EnginesTest() {
        MakePlayers<remote::RemoteMedia>(kOptions);
        Media().Prepare();
        Preview().Frames()->SetSize(160, 90);
        Stage().Frames()->SetSize(320, 180);
        EXPECT_TRUE(WaitUntil([] { return Engines().size() == 3; })) << "movie, sound and a spare";
    }
    void Kill(const std::string& path, int signal = SIGKILL) {
        const pid_t engine = EngineOf(path);
        ASSERT_GT(engine, 0);
        ASSERT_EQ(kill(engine, signal), 0);
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
    bool running;
    bool hidden;  ///< the console, and with it the preview
    double apart; ///< seconds between the twins
};

class EnginesEnd : public EnginesTest, public ::testing::WithParamInterface<EngineAct> {};

TEST_P(EnginesEnd, AndTheMovieGoesOnAtItsPlaceWithAllThatIsWantedOfIt) {
    const EngineAct& act = GetParam();
    ASSERT_TRUE(Sound().Load(ClipPath("clip.wav")));
    Order(Sound(), {.running = true, .seekTo = 0.0});
    ASSERT_TRUE(LoadTwins(kClip));
    Order({{&Preview(), {.running = act.running, .seekTo = 1.0 + act.apart, .rate = 0.75, .volume = 0}},
           {&Stage(), {.running = act.running, .seekTo = 1.0, .rate = 0.75, .volume = 100}}});
    ASSERT_TRUE(Shows(Stage(), 1.1));
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
    if (act.running) {
        ASSERT_TRUE(Reaches(Stage(), place + (act.signal == SIGSTOP ? 2.0 : 0.8)));
        EXPECT_NEAR(Stage().Position(), place + 0.75 * passed(), 0.5) << "what has passed counts";
        const double from = Stage().Position();
        const double then = passed();
        EXPECT_TRUE(WaitUntil([&] { return passed() > then + 0.5; }));
        EXPECT_NEAR((Stage().Position() - from) / (passed() - then), 0.75, 0.15);
    } else {
        EXPECT_FALSE(WaitUntil([&] { return Stage().Position() != 1.0; }, 0.5));
    }
    EXPECT_TRUE(Shows(Stage(), Stage().Position()));
    EXPECT_TRUE(WaitUntil([&] { return std::abs(Distance() + act.apart) < 0.08; }, 2.0)) << Distance();
    EXPECT_NEAR(Sound().Position(), std::min(sound + passed(), Sound().Duration()), 0.2)
        << "the other transport heard nothing of it";
    EXPECT_TRUE(WaitUntil([] { return Engines().size() == 3; })) << "there is a new spare";
    const auto said = lines.Lines();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find(kClip), std::string::npos) << said[0];
}

INSTANTIATE_TEST_SUITE_P(Acts, EnginesEnd,
                         ::testing::Values(EngineAct{"Killed", SIGKILL, true, false, 0.0},
                                           EngineAct{"Aborted", SIGABRT, true, false, 0.5},
                                           EngineAct{"Crashed", SIGSEGV, true, true, 0.0},
                                           EngineAct{"Hanging", SIGSTOP, true, false, 0.0},
                                           EngineAct{"Paused", SIGKILL, false, false, 0.0},
                                           EngineAct{"PausedApart", SIGKILL, false, true, 0.5}),
                         [](const auto& act) { return act.param.name; });

TEST_F(EnginesTest, TheEndOfTheSoundsEngineIsNothingToTheMovie) {
    const std::string file = ClipPath("clip.wav");
    ASSERT_TRUE(Sound().Load(file));
    Order(Sound(), {.running = true, .seekTo = 0.0});
    PlayTwins(kClip);
    ASSERT_TRUE(Reaches(Stage(), 0.5));
    CapturedStderr lines;
    const double sound = Sound().Position();
    const double place = Stage().Position();
    const auto began = std::chrono::steady_clock::now();
    Kill(file);
    EXPECT_TRUE(Reaches(Sound(), sound + 1.0));
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - began;
    EXPECT_LT(passed.count(), 1.7);
    EXPECT_NEAR(Stage().Position(), place + passed.count(), 0.1);
    EXPECT_EQ(lines.Lines().size(), 1U);
}

TEST_F(EnginesTest, AFileThatEndsItsEngineTwiceIsAtItsEndAndTheNextPlays) {
    PlayTwins(kClip);
    ASSERT_TRUE(Reaches(Stage(), 0.3));
    CapturedStderr lines;
    for (int times = 0; times < 2; ++times) {
        const pid_t engine = EngineOf(kClip);
        Kill(kClip);
        if (times == 0) {
            ASSERT_TRUE(GoesOnIn(engine));
        }
    }
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
        ASSERT_TRUE(WaitUntil([] { return Engines().size() == 3; }));
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
    const auto inFilter = [] {
        const std::string status = ReadFile("/proc/" + std::to_string(EngineOf(kClip)) + "/status");
        return status.find("Seccomp:\t2") != std::string::npos;
    };
    PlayTwins(kClip);
    EXPECT_TRUE(Reaches(Stage(), 0.3) && Shows(Stage(), Stage().Position()));
    EXPECT_TRUE(inFilter());
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
                  while (engines.size() < 3)
                      engines = Engines();
                  ASSERT_EQ(write(ends[1], engines.data(), 3 * sizeof(pid_t)), 3 * sizeof(pid_t));
                  kill(getpid(), SIGKILL);
              }),
              -SIGKILL);
    pid_t engines[3] = {};
    ASSERT_EQ(read(ends[0], engines, sizeof engines), sizeof engines);
    for (const pid_t engine : engines)
        EXPECT_TRUE(WaitUntil(
            [engine] {
                std::ifstream status("/proc/" + std::to_string(engine) + "/stat");
                std::string number;
                std::string name;
                std::string state;
                return !(status >> number >> name >> state) || state == "Z";
            },
            1.0));
    close(ends[0]);
    close(ends[1]);
}

} // namespace kirolane::tests
