// The sound device goes, hangs and comes back: a PulseAudio server of the test's own, whose one sink plays
// into a pipe.

#include "backends/mpv/sound_devices.h"
#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::tests {

/// Where the players look for a server, and nowhere else.
struct PrivateSession {
    PrivateSession() {
        setenv("XDG_RUNTIME_DIR", folder.Path().c_str(), 1);
        setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        setenv("PIPEWIRE_REMOTE", "none", 1);
    }
    TemporaryFolder folder;
    std::string socket = folder.Path("native");
};

class SoundDevice : PrivateSession, public EngineTest {
protected:
    SoundDevice() : EngineTest(mpv::MpvOptions{}) {
        mkfifo(m_pipe.c_str(), 0600);
        m_heard = open(m_pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        mkfifo(m_orders.c_str(), 0600);
        m_orderEnd = open(m_orders.c_str(), O_RDWR | O_CLOEXEC);
    }
    ~SoundDevice() override {
        EndPlayers();
        Stop();
        close(m_heard);
        close(m_orderEnd);
    }

    void StartServer(bool withCard = true) {
        const std::string command =
            "exec pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --log-target=null "
            "-L module-cli -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
            socket + (withCard ? "' -L '" + m_card : "") + "' >/dev/null <" + m_orders;
        const char* arguments[] = {"sh", "-c", command.c_str(), nullptr};
        ASSERT_EQ(posix_spawnp(&m_server, "sh", nullptr, nullptr, const_cast<char**>(arguments), environ), 0);
        ASSERT_TRUE(WaitUntil([] { return mpv::LookForSoundDevices(mpv::kServerPatience).There(); }));
    }
    void AddCard() {
        const std::string order = "load-module " + m_card + "\n";
        ASSERT_EQ(write(m_orderEnd, order.data(), order.size()), std::ssize(order));
    }
    void Stop() {
        if (m_server == 0)
            return;
        kill(m_server, SIGKILL);
        waitpid(m_server, nullptr, 0);
        m_server = 0;
        while (read(m_heard, m_samples.data(), sizeof m_samples) > 0) // nothing that it left is taken for new
            ;
    }

    int m_heard = -1; ///< what comes out of the sink
    std::array<std::int16_t, 32768> m_samples{};
    int m_orderEnd = -1; ///< what the server is told
    std::string m_pipe = folder.Path("heard");
    std::string m_orders = folder.Path("orders");
    std::string m_card = "module-pipe-sink use_system_clock_for_timing=yes file=" + m_pipe;
    pid_t m_server = 0;
};

class HeardPlayer : public SoundDevice, public ::testing::WithParamInterface<const char*> {
protected:
    PlayerEngine& Engine() { return GetParam() == std::string("clip.mp4") ? Stage() : Sound(); }
    void Play(std::int32_t volume, double from = 0.0) {
        Order(Engine(), {.running = true, .seekTo = from, .volume = volume});
    }
    /// The clip's tone comes out of the sink and stays, as loud as that volume has it.
    bool IsHeard(std::int32_t volume) {
        ssize_t steady = 0;
        return WaitUntil(
            [&] {
                const auto bytes = read(m_heard, m_samples.data(), sizeof m_samples);
                if (bytes <= 0)
                    return false;
                const int peak = *std::max_element(m_samples.begin(), m_samples.begin() + bytes / 2);
                steady = std::abs(peak - volume * 64) <= volume * 6 ? steady + bytes : 0;
                return steady > 44100; // bytes: a quarter of a second
            },
            5.0);
    }
    bool Advances() {
        const double from = Engine().Position();
        return WaitUntil([&] { return Engine().Position() > from + 0.4; }, 1.0);
    }
};

TEST_P(HeardPlayer, SoundComesBackWithIt) {
    CapturedStderr lines;
    ASSERT_TRUE(Engine().Load(ClipPath(GetParam())));
    Play(256);
    EXPECT_TRUE(Advances()) << "there was never a device";
    StartServer(false);
    EXPECT_TRUE(Reaches(Engine(), 1.8)) << "nor has the server one yet";
    AddCard();
    Play(256);
    EXPECT_TRUE(IsHeard(256));
    Play(128);
    EXPECT_TRUE(IsHeard(128));
    Stop();
    EXPECT_TRUE(Advances()) << "the device has gone";
    Play(128);
    StartServer();
    EXPECT_TRUE(IsHeard(128));
    Stop();
    ASSERT_TRUE(Engine().Load(ClipPath(GetParam())));
    Play(128);
    StartServer();
    EXPECT_TRUE(IsHeard(128)) << "in the next file";
    EXPECT_EQ(lines.Lines().size(), 3U) << "one for each loss";
}

TEST_P(HeardPlayer, AServerThatHangsHoldsNothingUp) {
    StartServer();
    ASSERT_TRUE(Engine().Load(ClipPath(GetParam())));
    Play(256, 2.0);
    EXPECT_TRUE(IsHeard(256));
    kill(m_server, SIGSTOP);
    Order(Engine(),
          {.running = true, .seekTo = {}, .volume = 128}); // what is heard at it comes from after the hang
    EXPECT_TRUE(WaitUntil([&] { return Engine().AtEnd(); })) << "libmpv itself told of it";
    EXPECT_LT(SecondsOf([&] { ASSERT_TRUE(Engine().Load(ClipPath(GetParam()))); }), 1.0);
    Play(128);
    kill(m_server, SIGCONT);
    EXPECT_TRUE(IsHeard(128));
}

INSTANTIATE_TEST_SUITE_P(Media, HeardPlayer, ::testing::Values("clip.mp4", "clip.mp3"));

TEST_F(SoundDevice, TwinsStayTogetherWhenTheirServerHangs) {
    StartServer();
    PlayTwins(ClipPath("clip.mp4"));
    ASSERT_TRUE(Reaches(Stage(), 1.0));
    kill(m_server, SIGSTOP);
    const auto shows = [&](PlayerEngine& engine) {
        const auto grey = Grey(engine);
        return grey && std::abs(*grey - GreyAt(engine.Position())) < 8.0;
    };
    ASSERT_TRUE(WaitUntil([&] { return !shows(Stage()); })) << "pictures stand";
    EXPECT_TRUE(Reaches(Stage(), 2.5));
    EXPECT_TRUE(WaitUntil([&] { return shows(Stage()) && shows(Preview()); }, 1.0));
    EXPECT_NEAR(Stage().Position(), Preview().Position(), 0.05);
}

} // namespace kirolane::tests
