// MIDI files: read with care, rendered ahead.

#include "backends/mpv/midi_song.h"
#include "crafted_files.h"
#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

namespace kirolane::tests {

namespace {

std::optional<mpv::MidiSong> Read(const std::string& file) {
    std::string cause;
    auto song = mpv::ReadMidi({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}, cause);
    EXPECT_EQ(song.has_value(), cause.empty()) << cause;
    return song;
}

std::string Bytes(std::initializer_list<int> bytes) {
    return {bytes.begin(), bytes.end()};
}

const std::string kNoteOn = Bytes({0x90, 69, 100});
const std::string kNoteOff = Bytes({0x80, 69, 0});
const std::string kEnd = Bytes({0, 0xFF, 0x2F, 0});

std::string Note(std::uint32_t ticks) {
    return MidiNumber(0) + kNoteOn + MidiNumber(ticks) + kNoteOff;
}

} // namespace

TEST(MidiSong, TimesFollowTheTemposOfAnyTrackAndRunningStatusIsKept) {
    // 100 ticks a quarter: a quarter at 120 a minute, then at 60; the second track changes the tempo.
    const std::string notes = MidiNumber(0) + kNoteOn + MidiNumber(100) + Bytes({69, 0}) + // off, status kept
                              MidiNumber(0) + Bytes({60, 100}) + MidiNumber(100) + Bytes({60, 0}) + kEnd;
    const std::string tempo = MidiNumber(100) + Bytes({0xFF, 0x51, 3, 0x0F, 0x42, 0x40}) + kEnd;
    const auto song = Read(MidiFile(1, 100, {notes, tempo}));
    ASSERT_TRUE(song);
    ASSERT_EQ(song->events.size(), 4U);
    EXPECT_DOUBLE_EQ(song->events[1].time, 0.5);
    EXPECT_DOUBLE_EQ(song->seconds, 1.5);
    EXPECT_EQ(song->events[3].status, 0x90);
    EXPECT_EQ(song->events[3].data1, 60);
    EXPECT_FALSE(song->cut);
}

TEST(MidiSong, TicksMayCountFramesOfFilmAndWhatIsBrokenEndsItsTrackAlone) {
    const auto film = Read(MidiFile(0, 0xE728, {Note(1000) + kEnd})); // 25 frames of 40 ticks
    ASSERT_TRUE(film);
    EXPECT_DOUBLE_EQ(film->seconds, 1.0);
    const std::string broken = Note(500) + MidiNumber(0) + Bytes({0xF0, 0x7F, 1, 2}); // a message too long
    const auto song = Read(MidiFile(1, 500, {broken, Note(1000) + kEnd}));
    ASSERT_TRUE(song);
    EXPECT_DOUBLE_EQ(song->seconds, 1.0);
    EXPECT_EQ(song->events.size(), 4U);
}

TEST(MidiSong, HostileFilesAreRefusedOrBounded) {
    const std::string whole = MidiFile({{0.0, 1.0}});
    for (std::size_t size = 0; size < whole.size(); ++size) { // cut anywhere: no crash, and no note no song
        const auto song = Read(whole.substr(0, size));
        EXPECT_TRUE(!song || song->seconds > 0.0);
    }
    EXPECT_FALSE(Read(MidiFile(0, 0, {Note(500) + kEnd}))) << "ticks of no length";
    EXPECT_FALSE(Read(MidiFile(0, 500, {kEnd}))) << "no note";
    EXPECT_FALSE(Read(MidiFile(0, 500, {Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF})}))) << "a time too long";

    std::string slow = Note(500);
    for (int i = 0; i < 100; ++i)
        slow += Note(0x0FFFFFFF); // six days each
    const auto song = Read(MidiFile(0, 500, {slow}));
    ASSERT_TRUE(song);
    EXPECT_TRUE(song->cut);
    EXPECT_LE(song->seconds, mpv::MidiSong::kLongest);

    std::string many;
    for (std::size_t i = 0; i <= mpv::MidiSong::kMostEvents; ++i)
        many += Bytes({0, 69, i % 2 == 0 ? 1 : 0});
    const auto crowd = Read(MidiFile(0, 500, {Bytes({0, 0x90, 1, 1}) + many + Note(500)}));
    EXPECT_FALSE(crowd && crowd->events.size() > mpv::MidiSong::kMostEvents);
}

class MidiPlaying : public EngineTest {
protected:
    using EngineTest::EngineTest;
    void ExpectOpens(const std::string& content, double within) {
        const std::string path = m_folder.Write("long.mid", content);
        EXPECT_LT(SecondsOf([&] { ASSERT_TRUE(Sound().Load(path)); }), within);
    }
    TemporaryFolder m_folder;
};

TEST_F(MidiPlaying, ALongPieceOpensAtOnceAndSeeksToItsEnd) {
    std::vector<MidiNote> notes;
    for (int second = 0; second < 600; ++second)
        notes.push_back({static_cast<double>(second), 0.9, 48 + second % 36});
    ExpectOpens(MidiFile(notes), 1.0);
    const double duration = Sound().Duration();
    EXPECT_NEAR(duration, 601.9, 0.05) << "the last event and two seconds";
    Order(Sound(), {.running = true, .seekTo = duration - 0.5}); // rendered or not
    EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
    EXPECT_EQ(Sound().Position(), duration);
}

TEST_F(MidiPlaying, ACrowdOfNotesIsNotWaitedFor) {
    std::string track;
    for (int i = 0; i < 400'000; ++i) // in a minute; none is ended, and hundreds sound on
        track += MidiNumber(i % 4 == 0 ? 1 : 0) + Bytes({0x90 + i % 9, 24 + i % 90, 100});
    ExpectOpens(MidiFile(0, 900, {track + kEnd}), 3.0);
    Order(Sound(), {.running = true, .seekTo = {}});
    EXPECT_TRUE(Reaches(Sound(), 0.3));
}

class WithoutSoundFont : public MidiPlaying {
protected:
    WithoutSoundFont()
        : MidiPlaying(mpv::MpvOptions{.audioOutput = "null", .soundFont = "/nowhere/none.sf2"}) {}
};

TEST_F(WithoutSoundFont, AMidiFileIsRefusedWithOneLine) {
    CapturedStderr lines;
    const std::string path = m_folder.Write("a.mid", MidiFile({{0.0, 1.0}}));
    EXPECT_FALSE(Sound().Load(path));
    EXPECT_EQ(lines.Lines(), std::vector<std::string>{"kirolane: " + path +
                                                      ": the SoundFont /nowhere/none.sf2 cannot be used"});
    EXPECT_TRUE(Sound().Load(ClipPath("clip.wav")));
}

} // namespace kirolane::tests
