// What reaches the outputs: recorded by libmpv's own file output in place of a sound card, and measured by
// ffmpeg.

#include "engine_test.h"

namespace kirolane::tests {

class SoundOutput : public EngineTest {
protected:
    static constexpr double kHalf = -9.03; ///< decibels: the power of a sine of half the full amplitude
    static constexpr double kRate = 44100.0;
    static constexpr const char* kAll = "anull";
    static constexpr const char* kSteady = "atrim=1:3";

    SoundOutput() {
        MakePlayers({.audioOutput = "pcm", .previewOutput = "pcm", .audioFileBase = recordings.Path("out")});
    }
    /// A figure of astats about that part of what the player has played; all of them have ended.
    double Figure(const std::string& name, const std::string& player, const std::string& part) {
        const std::string command = "ffmpeg -nostdin -hide_banner -i " +
                                    recordings.Path("out." + player + ".wav") + " -af aresample=44100," +
                                    part + ",astats -f null - 2>" + recordings.Path("report");
        EXPECT_EQ(std::system(command.c_str()), 0);
        const std::string report = recordings.Read("report");
        return std::stod(report.substr(report.find(name + ": ") + name.size() + 2));
    }
    double Seconds(const std::string& player) { return Figure("Number of samples", player, kAll) / kRate; }
    void PlayThrough(const std::string& clip, double rate, std::int32_t volume) {
        Order(Sound(), {.seekTo = {}, .rate = rate, .volume = volume}); // held by the empty player
        ASSERT_TRUE(Sound().Load(ClipPath(clip)));
        Order(Sound(), {.running = true, .seekTo = 0.0, .rate = rate, .volume = volume});
        EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
        EndPlayers();
    }

    TemporaryFolder recordings;
};

TEST_F(SoundOutput, ThePreviewIsSilentWhileTheStageSounds) {
    PlayTwins(ClipPath("clip.mp4"));
    Order(Preview(), {.running = true, .seekTo = 1.0}); // apart, or it would rest
    EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
    EndPlayers();
    EXPECT_NEAR(Figure("RMS level dB", "stage", kSteady), kHalf, 0.2);
    EXPECT_GT(Seconds("preview"), 3.0) << "it was recorded";
    EXPECT_LT(Figure("Peak level dB", "preview", kAll), -200.0);
}

TEST_F(SoundOutput, RateChangesTheLengthAndKeepsThePitchAndAmplitudeIsLinearInVolume) {
    PlayThrough("clip.wav", 1.25, 16);
    EXPECT_NEAR(Seconds("sound"), 4.0, 0.15);
    EXPECT_NEAR(Figure("Zero crossings rate", "sound", kSteady) * kRate / 2, 440.0, 3.0);
    EXPECT_NEAR(Figure("RMS level dB", "sound", kSteady), kHalf - 24.08, 0.2);
}

TEST_F(SoundOutput, AMidiFileSoundsUntilItsLastNoteHasDiedAway) {
    PlayThrough("midi.mov", 1.0, 256); // known by its content
    EXPECT_NEAR(Seconds("sound"), 5.0, 0.5);
    EXPECT_NEAR(Figure("Peak level dB", "sound", kAll), -13.0, 12.9);
    EXPECT_LT(Figure("Peak level dB", "sound", "areverse,atrim=end=0.05"), -40.0);
}

} // namespace kirolane::tests
