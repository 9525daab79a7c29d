#include "backends/mpv/midi_song.h"
#include "engine_test.h"

namespace kirolane::tests {

namespace {

/// Of each number the lowest eight bits.
std::string Bytes(std::initializer_list<int> bytes) {
    return {bytes.begin(), bytes.end()};
}

/// Of fewer than 16384 ticks.
std::string Note(int ticks, int key = 69) {
    return Bytes({0, 0x90, key, 100, 0x80 | ticks >> 7, ticks & 0x7F, 0x80, key, 0});
}

const std::string kEnd = Bytes({0, 0xFF, 0x2F, 0});

/// With so many ticks a quarter, of which there are 120 a minute; or as SMPTE counts them.
std::string File(int division, const std::vector<std::string>& tracks) {
    std::string file =
        "MThd" + Bytes({0, 0, 0, 6, 0, 1, 0, static_cast<int>(tracks.size()), division >> 8, division});
    for (const std::string& track : tracks) {
        const int size = static_cast<int>(track.size());
        file += "MTrk" + Bytes({size >> 24, size >> 16, size >> 8, size}) + track;
    }
    return file;
}

std::string Repeated(std::size_t times, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::optional<mpv::MidiSong> Read(const std::string& file) {
    std::string cause;
    auto song = mpv::ReadMidi({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}, cause);
    EXPECT_EQ(song.has_value(), cause.empty()) << cause;
    return song;
}

} // namespace

TEST(MidiSong, IsReadAsFarAsItCanBe) {
    const struct {
        const char* name;
        std::string file;
        double seconds = 0.0; ///< 0: it is refused
        std::size_t events = 0;
        bool cut = false;
    } cases[] = {
        {"the second track halves the tempo, and a status holds for what follows",
         File(100, {Bytes({0, 0x90, 69, 100, 100, 69, 0, 0, 60, 100, 100, 60, 0}) + kEnd,
                    Bytes({100, 0xFF, 0x51, 3, 0x0F, 0x42, 0x40}) + kEnd}),
         1.5, 4},
        {"25 frames of 40 ticks a second", File(0xE728, {Note(1000) + kEnd}), 1.0, 2},
        {"a message too long ends its track alone",
         File(500, {Note(500) + Bytes({0, 0xF0, 0x7F, 1, 2}), Note(1000) + kEnd}), 1.0, 4},
        {"ticks of no length", File(0, {Note(500) + kEnd})},
        {"no note", File(500, {kEnd})},
        {"a time too long", File(500, {Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF})})},
        {"a note of six days",
         File(500, {Note(500) + Bytes({0, 0x90, 69, 100, 0xFF, 0xFF, 0xFF, 0x7F, 0x80, 69, 0})}), 0.5, 3,
         true},
        {"too many notes", File(500, {Repeated(mpv::MidiSong::kMostEvents / 2, Note(0)) + Note(500)})},
    };
    for (const auto& [name, file, seconds, events, cut] : cases) {
        const mpv::MidiSong song = Read(file).value_or(mpv::MidiSong());
        EXPECT_DOUBLE_EQ(song.seconds, seconds) << name;
        EXPECT_EQ(song.events.size(), events) << name;
        EXPECT_EQ(song.cut, cut) << name;
    }
    const std::string whole = File(500, {Note(1000) + kEnd});
    for (std::size_t size = 0; size < whole.size(); ++size) { // no crash, and no note no song
        const auto song = Read(whole.substr(0, size));
        EXPECT_TRUE(!song || song->seconds > 0.0);
    }
}

class MidiPlaying : public EngineTest {
protected:
    void ExpectOpens(const std::string& content, double within) {
        const std::string path = m_folder.Write("long.mid", content);
        EXPECT_LT(SecondsOf([&] { ASSERT_TRUE(Sound().Load(path)); }), within);
    }
    TemporaryFolder m_folder;
};

TEST_F(MidiPlaying, ALongPieceOpensAtOnceAndSeeksToItsEnd) {
    ExpectOpens(File(500, {Repeated(60, Note(2000) + Note(8000, 50)) + kEnd}), 1.0);
    const double duration = Sound().Duration();
    EXPECT_NEAR(duration, 602.0, 0.05) << "the last event and two seconds";
    Order(Sound(), {.running = true, .seekTo = duration - 0.5}); // rendered or not
    EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
    EXPECT_EQ(Sound().Position(), duration);
}

TEST_F(MidiPlaying, ACrowdOfNotesIsNotWaitedFor) {
    std::string track;
    for (int i = 0; i < 400'000; ++i) // in a minute; none is ended, and hundreds sound on
        track += Bytes({i % 4 == 0 ? 1 : 0, 0x90 + i % 9, 24 + i % 90, 100});
    ExpectOpens(File(900, {track + kEnd}), 3.0);
    Order(Sound(), {.running = true, .seekTo = {}});
    EXPECT_TRUE(Reaches(Sound(), 0.3));
}

} // namespace kirolane::tests
