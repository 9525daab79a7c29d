// What reaches the outputs: recorded by libmpv's own file output in place of a sound card.

#include "crafted_files.h"
#include "engine_test.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>

namespace kirolane::tests {

namespace {

/// What was recorded in the first channel, 1 for full scale.
struct Recording {
    double rate = 0.0; ///< samples a second
    std::vector<double> samples;

    [[nodiscard]] double Seconds() const { return static_cast<double>(samples.size()) / rate; }
    [[nodiscard]] double PeakFrom(double seconds) const {
        double peak = 0.0;
        for (auto i = static_cast<std::size_t>(std::max(0.0, seconds) * rate); i < samples.size(); ++i)
            peak = std::max(peak, std::abs(samples[i]));
        return peak;
    }
    [[nodiscard]] std::span<const double> MiddleHalf() const {
        return std::span(samples).subspan(samples.size() / 4, samples.size() / 2);
    }
    /// Of a steady sine, from its power.
    [[nodiscard]] double Amplitude() const {
        double power = 0.0;
        for (const double sample : MiddleHalf())
            power += sample * sample;
        return std::sqrt(2.0 * power / static_cast<double>(MiddleHalf().size()));
    }
    /// Of a steady tone in hertz, from its crossings of zero.
    [[nodiscard]] double Frequency() const {
        const auto half = MiddleHalf();
        int crossings = 0;
        for (std::size_t i = 1; i < half.size(); ++i)
            crossings += half[i - 1] < 0.0 && half[i] >= 0.0 ? 1 : 0;
        return crossings * rate / static_cast<double>(half.size());
    }
};

template <class T> T At(const std::string& bytes, std::size_t place) {
    T value{};
    std::memcpy(&value, bytes.data() + place, sizeof value);
    return value;
}

/// Of a WAV file of whole or floating samples, as libmpv writes it.
Recording ReadWav(const std::string& bytes) {
    const std::size_t format = bytes.find("fmt ");
    const std::size_t data = bytes.find("data");
    if (bytes.size() < 44 || format == std::string::npos || data == std::string::npos) {
        ADD_FAILURE() << "no WAV file";
        return {};
    }
    Recording recording{static_cast<double>(At<std::uint32_t>(bytes, format + 12)), {}};
    const std::size_t frame = At<std::uint16_t>(bytes, format + 20);
    const bool whole = At<std::uint16_t>(bytes, format + 22) == 16; // else of 32 bits, floating
    for (std::size_t place = data + 8; place + frame <= bytes.size(); place += frame)
        recording.samples.push_back(whole ? At<std::int16_t>(bytes, place) / 32768.0
                                          : At<float>(bytes, place));
    return recording;
}

/// The amplitude of the clips at full volume.
constexpr double kHalf = 0.5;

} // namespace

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
    Recording Recorded(const std::string& player) {
        EndPlayers();
        return ReadWav(recordings.Read("out." + player + ".wav"));
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

TEST_F(SoundOutput, ThePreviewIsSilentWhileTheStageSounds) {
    PlayTwins(ClipPath("clip.mp4"));
    Order(Preview(), {.running = true, .seekTo = 1.0}); // apart, or it would rest
    EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
    const Recording preview = Recorded("preview");
    EXPECT_NEAR(Recorded("stage").Amplitude(), kHalf, kHalf * 0.02);
    EXPECT_GT(preview.Seconds(), 3.0) << "it was recorded";
    EXPECT_EQ(preview.PeakFrom(0.0), 0.0);
}

TEST_F(SoundOutput, RateChangesTheLengthAndKeepsThePitchAndAmplitudeIsLinearInVolume) {
    PlayThrough(Sound(), ClipPath("clip.wav"), 1.25, 16);
    const Recording sound = Recorded("sound");
    EXPECT_NEAR(sound.Seconds(), 4.0, 0.15);
    EXPECT_NEAR(sound.Frequency(), 440.0, 3.0);
    EXPECT_NEAR(sound.Amplitude(), kHalf * 16 / 256.0, kHalf * 0.02);
}

TEST_F(SoundOutput, AMidiFileSoundsAtItsPitch) {
    // Known by its content.
    PlayThrough(Sound(), m_folder.Write("a.mov", MidiFile({{0.0, 2.0, 69, 120}})), 1.0, 256);
    const Recording sound = Recorded("sound");
    EXPECT_GT(sound.PeakFrom(0.0), 0.05);
    EXPECT_LT(sound.PeakFrom(0.0), 0.99);
    EXPECT_NEAR(sound.Seconds(), 2.3, 0.5) << "the note and what it takes to die away";
    EXPECT_LT(sound.PeakFrom(sound.Seconds() - 0.05), 0.01);
}

} // namespace kirolane::tests
