// The sound device goes, hangs and comes back: a PulseAudio server of the test's own, whose one sink plays
// into a pipe.

#include "backends/mpv/sound_devices.h"
#include "backends/remote/remote_media.h"
#include "engine_test.h"
#include "engines.h"
#include "pipe.h"
#include "support/captured_stderr.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>

namespace kirolane::tests {

struct Heard {
    const char* clip;
    bool boxed; ///< in an engine of its own
};

class HeardPlayer : public EngineTest, public ::testing::WithParamInterface<Heard> {
protected:
    /// The players look for a server here, and nowhere else.
    HeardPlayer() {
        setenv("XDG_RUNTIME_DIR", folder.Path().c_str(), 1);
        unsetenv("PULSE_SERVER");
        folder.MakeFolder("pulse");
        setenv("PIPEWIRE_REMOTE", "none", 1);
        MakePlayers({});
    }
    void SetUp() override {
        if (std::system("command -v pulseaudio >/dev/null") != 0)
            GTEST_SKIP() << "there is no pulseaudio, or it cannot stand beside the desktop's sound server";
    }
    ~HeardPlayer() override {
        EndPlayers();
        Stop();
    }

    void StartServer(bool withCard = true) {
        const std::string command =
            "exec pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --log-target=null "
            "-L 'module-native-protocol-unix auth-anonymous=1 socket=" +
            socket + (withCard ? "' -L '" + card : "") + "'";
        const char* arguments[] = {"sh", "-c", command.c_str(), nullptr};
        ASSERT_EQ(posix_spawnp(&m_server, "sh", nullptr, nullptr, const_cast<char**>(arguments), environ), 0);
        ASSERT_TRUE(WaitUntil([] { return mpv::LookForSoundDevices(mpv::kServerPatience).There(); }));
    }
    void Stop() {
        if (m_server == 0)
            return;
        kill(m_server, SIGKILL);
        waitpid(m_server, nullptr, 0);
        m_server = 0;
        heard.Drain(); // nothing that it left is taken for new
    }

    PlayerEngine& Engine() { return m_clip == "clip.mp4" ? Stage() : Sound(); }
    bool Load() {
        if (m_clip.empty() && GetParam().boxed)
            MakePlayers<remote::RemoteMedia>(remote::RemoteOptions{{}, KIROLANE_ENGINE});
        m_clip = GetParam().clip;
        return Engine().Load(ClipPath(m_clip));
    }
    void Play(std::int32_t volume, double from = 0.0) {
        Order(Engine(), {.running = true, .seekTo = from, .volume = volume});
    }
    /// The clip's tone comes out of the sink and stays, as loud as that volume has it.
    bool IsHeard(std::int32_t volume) {
        std::size_t steady = 0; // samples
        return WaitUntil(
            [&] {
                const auto samples = heard.Read();
                if (samples.empty())
                    return false;
                const int peak = *std::max_element(samples.begin(), samples.end());
                steady = std::abs(peak - volume * 64) <= volume * 6 ? steady + samples.size() : 0;
                return steady > 22050; // a quarter of a second
            },
            5.0);
    }
    bool Advances() {
        const double from = Engine().Position();
        return WaitUntil([&] { return Engine().Position() > from + 0.4; }, 1.0);
    }

    TemporaryFolder folder;
    std::string socket = folder.Path("pulse/native"); ///< where it stands in most sessions
    std::string card = "module-pipe-sink use_system_clock_for_timing=yes file=" + folder.Path("heard");
    Pipe heard{folder.Path("heard")}; ///< what comes out of the sink
    pid_t m_server = 0;
    std::string m_clip;
};

TEST_P(HeardPlayer, SoundComesBackWithIt) {
    CapturedStderr lines;
    ASSERT_TRUE(Load());
    Play(256);
    EXPECT_TRUE(Advances()) << "there was never a device";
    StartServer(false);
    EXPECT_TRUE(Reaches(Engine(), 1.8)) << "nor has the server one yet";
    ASSERT_EQ(std::system(("pactl load-module " + card).c_str()), 0);
    Play(256);
    EXPECT_TRUE(IsHeard(256));
    Play(128);
    EXPECT_TRUE(IsHeard(128));
    if (GetParam().boxed) { // and with another engine
        heard.Drain();
        EXPECT_EQ(kill(EngineOf(ClipPath(m_clip)), SIGKILL), 0);
        EXPECT_TRUE(IsHeard(128));
    }
    Stop();
    EXPECT_TRUE(Advances()) << "the device has gone";
    Play(128);
    StartServer();
    EXPECT_TRUE(IsHeard(128));
    Stop();
    ASSERT_TRUE(Load());
    Play(128);
    StartServer();
    EXPECT_TRUE(IsHeard(128)) << "in the next file";
    const auto said = lines.Lines();
    EXPECT_EQ(said.size(), GetParam().boxed ? 4U : 3U)
        << "one for each loss, and not " << ::testing::PrintToString(said);
}

TEST_P(HeardPlayer, AServerThatHangsHoldsNothingUp) {
    StartServer();
    ASSERT_TRUE(Load());
    Play(256, 2.0);
    EXPECT_TRUE(IsHeard(256));
    kill(m_server, SIGSTOP);
    Order(Engine(), {.running = true, .seekTo = {}, .volume = 128}); // heard from after the hang
    EXPECT_TRUE(WaitUntil([&] { return Engine().AtEnd(); })) << "libmpv itself told of it";
    EXPECT_LT(SecondsOf([&] { ASSERT_TRUE(Load()); }), 1.0);
    Play(128);
    kill(m_server, SIGCONT);
    EXPECT_TRUE(IsHeard(128));
}

INSTANTIATE_TEST_SUITE_P(Media, HeardPlayer,
                         ::testing::Values(Heard{"clip.mp4", false}, Heard{"clip.mp3", false},
                                           Heard{"clip.mp4", true}, Heard{"clip.mp3", true}));

TEST_F(HeardPlayer, TwinsStayTogetherWhenTheirServerHangs) {
    StartServer();
    PlayTwins(ClipPath("clip.mp4"));
    ASSERT_TRUE(Reaches(Stage(), 1.0));
    kill(m_server, SIGSTOP);
    const auto shows = [&](PlayerEngine& engine) {
        return std::abs(Grey(engine) - GreyAt(engine.Position())) < 8.0;
    };
    ASSERT_TRUE(WaitUntil([&] { return !shows(Stage()); })) << "pictures stand";
    EXPECT_TRUE(Reaches(Stage(), 2.5));
    EXPECT_TRUE(WaitUntil([&] { return shows(Stage()) && shows(Preview()); }, 1.0));
    EXPECT_NEAR(Stage().Position(), Preview().Position(), 0.05);
}

} // namespace kirolane::tests
