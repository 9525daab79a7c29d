// What reaches the outputs: recorded by libmpv's own file output in place of a sound card.

#include "crafted_files.h"
#include "engine_test.h"
#include "support/temporary_folder.h"
#include "wav_file.h"

#include <array>
#include <cmath>

namespace kirolane::tests {

/// Holds the folder that the options of the base name.
struct RecordingFolder {
    TemporaryFolder recordings;
};

class SoundOutput : RecordingFolder, public EngineTest {
protected:
    SoundOutput()
        : EngineTest(mpv::MpvOptions{
              .audioOutput = "pcm", .previewOutput = "pcm", .audioFileBase = recordings.Path("out")}) {}

    /// What was recorded of that player; ends all of them.
    WavFile Recording(const std::string& player) {
        EndPlayers();
        return WavFile::Read(recordings.Path("out." + player + ".wav"));
    }
    /// Plays the file to its end.
    void PlayThrough(PlayerEngine& engine, const std::string& path, double rate, std::int32_t volume) {
        Order(engine, {.seekTo = {}, .rate = rate, .volume = volume}); // held by the empty player
        ASSERT_TRUE(engine.Load(path));
        Order(engine, {.running = true, .seekTo = 0.0, .rate = rate, .volume = volume});
        EXPECT_TRUE(WaitUntil([&] { return engine.AtEnd(); }));
    }

    TemporaryFolder m_folder;
};

/// The amplitude of the clips at full volume.
constexpr double kHalf = 0.5;

TEST_F(SoundOutput, ThePreviewIsSilentWhileTheStageSounds) {
    const std::string path = ClipPath("clip.mp4");
    ASSERT_TRUE(Preview().Load(path) && Stage().Load(path));
    Order(Stage(), {.running = true, .seekTo = 0.0});
    Order(Preview(), {.running = true, .seekTo = 1.0}); // apart, or it would rest
    EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
    const WavFile preview = Recording("preview");
    const WavFile stage = Recording("stage");
    EXPECT_NEAR(stage.Amplitude(), kHalf, kHalf * 0.02);
    EXPECT_GT(preview.Seconds(), 3.0) << "it was recorded";
    EXPECT_EQ(preview.Peak(), 0.0);
}

TEST_F(SoundOutput, RateChangesTheLengthAndKeepsThePitchAndAmplitudeIsLinearInVolume) {
    PlayThrough(Sound(), ClipPath("clip.wav"), 1.25, 16);
    const WavFile wav = Recording("sound");
    EXPECT_NEAR(wav.Seconds(), 4.0, 0.15);
    EXPECT_NEAR(wav.Frequency(), 440.0, 3.0);
    EXPECT_NEAR(wav.Amplitude(), kHalf * 16 / 256.0, kHalf * 0.02);
}

TEST_F(SoundOutput, AMidiFileSoundsAtItsPitch) {
    PlayThrough(Sound(), m_folder.Write("a.mov", MidiFile({{0.0, 2.0, 69, 120}})), 1.0,
                256); // known by its content
    const WavFile wav = Recording("sound");
    EXPECT_GT(wav.Peak(), 0.05);
    EXPECT_LT(wav.Peak(), 0.99);
    EXPECT_NEAR(wav.Seconds(), 2.3, 0.5) << "the note and what it takes to die away";
    EXPECT_LT(wav.PeakOfLast(0.05), 0.01);
}

} // namespace kirolane::tests
