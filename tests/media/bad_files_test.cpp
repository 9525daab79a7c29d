// Files that cannot be played: one line that says why, and the players go on.

#include "backends/mpv/duration_probe.h"
#include "engine_test.h"
#include "gates.h"
#include "support/captured_stderr.h"

#include <sys/stat.h>

namespace kirolane::tests {

class BadFiles : public EngineTest {
protected:
    void ExpectPlays(const std::string& path = ClipPath("clip.mp4")) {
        PlayTwins(path);
        EXPECT_NEAR(Stage().Duration(), 5.0, 0.1) << path;
        EXPECT_TRUE(Reaches(Preview(), 0.1) && Reaches(Stage(), 0.1)) << path;
        Unload();
    }
    /// Neither twin opens it; one line names it.
    void ExpectRefused(const std::string& path) {
        CapturedStderr lines;
        EXPECT_FALSE(Preview().Load(path) || Stage().Load(path)) << path;
        Unload();
        const auto said = lines.Lines();
        ASSERT_EQ(said.size(), 1U) << path;
        EXPECT_EQ(said[0].find("kirolane: " + path + ": "), 0U) << said[0];
        EXPECT_EQ(Stage().Duration(), 0.0);
        EXPECT_FALSE(Stage().Frames()->HasFrame() || Stage().Frames()->HasPicture());
    }

    TemporaryFolder m_folder;
};

TEST_F(BadFiles, WhatCannotBePlayedIsRefusedWithOneLineAndTheNextPlays) {
    for (const auto& file : std::filesystem::directory_iterator(ClipPath("bad")))
        ExpectRefused(file.path());
    ExpectRefused(m_folder.Path("missing.mov"));
    ASSERT_EQ(mkfifo(m_folder.Path("fifo.mov").c_str(), 0600), 0);
    EXPECT_LT(SecondsOf([&] { ExpectRefused(m_folder.Path("fifo.mov")); }), 1.0) << "it must not be opened";
    MakePlayers({.audioOutput = "null", .soundFont = "/nowhere/none.sf2"});
    ExpectRefused(ClipPath("clip.mid"));
    ExpectPlays();
}

TEST_F(BadFiles, AFileThatGoesAwayWhileItPlaysStopsNothing) {
    const std::string path = m_folder.Write("clip.mp4", Content("clip.mp4"));
    PlayTwins(path);
    std::filesystem::remove(path);
    EXPECT_TRUE(Reaches(Stage(), 0.3));
    Order(Preview(), {.running = true, .seekTo = 3.0}); // it is read anew, as it was opened
    EXPECT_TRUE(Reaches(Preview(), 3.3) && Reaches(Stage(), 1.0));
    ExpectRefused(path);
    ExpectPlays();
}

TEST(MeasureLengthTest, AGuessCutsNothingOffWhatBeginsWithItsCostlyPart) {
    std::string cause;
    const auto medium = wire::Medium::Open(ClipPath("calms_down.mpg"), cause);
    ASSERT_NE(medium, nullptr) << cause;
    for (const int limit :
         {1, 2, 3, 4, 6, 8, 10, 15, 20, 30}) // milliseconds, of which some leave it half read
        EXPECT_GT(mpv::MeasureLength(medium, 39.96, std::chrono::milliseconds(limit)).seconds, 39.9) << limit;
}

TEST_F(BadFiles, NamesOfAnyBytesOpen) {
    m_folder.MakeFolder("edl:");
    for (const char* name : {"映画 その１.MP4", "\xFF\xFE\x80.mov", "-pause=no", "%20%s%n.mp4",
                             "a:b\\c\n.mp4", "memory:.MOV", "edl://clip.mp4"})
        ExpectPlays(m_folder.Write(name, Content("clip.mp4")));
}

/// With patience enough for another player to be made, and no more.
class SlowFiles : public BadFiles {
protected:
    SlowFiles() {
        MakePlayers({.audioOutput = "null", .loadLimit = std::chrono::milliseconds(1500)});
        m_folder.MakeFolder("stick");
    }
    ~SlowFiles() override { mediumGate.Open(); }
    std::string OnStick() { return m_folder.Write("stick/clip.dv", Content("clip.dv")); }
};

TEST_F(SlowFiles, AFileThatDoesNotAnswerInTimeIsRefusedAndTheNextPlays) {
    // Sixteen gigabytes without a second packet to be found in them; none is on the disk.
    const std::string path = m_folder.Write("endless.mpg", Content("stream.mpg").substr(0, 3000));
    std::filesystem::resize_file(path, std::uintmax_t(16) << 30);
    EXPECT_LT(SecondsOf([&] { ExpectRefused(path); }), 2.5) << "both twins together";

    // The audience's picture does not wait for a sound that does not answer.
    PlayTwins(ClipPath("clip.mp4"));
    ASSERT_TRUE(Reaches(Stage(), 0.1));
    int painted = 0;
    Stage().Frames()->SetPainter([&] { ++painted; });
    EXPECT_FALSE(Sound().Load(path));
    Stage().Frames()->SetPainter({});
    EXPECT_GT(painted, 15) << "of some 37 pictures";
}

TEST_F(SlowFiles, AMediumThatStopsAnsweringHoldsUpNeitherTheNextFileNorTheEnd) {
    const std::string path = OnStick();
    PlayTwins(path);
    ASSERT_TRUE(Reaches(Stage(), 0.1));
    mediumGate.Close("/stick/");
    ASSERT_TRUE(mediumGate.Holds(1));
    Preview().Release();
    Stage().Release();
    EXPECT_LT(SecondsOf([&] { ExpectPlays(); }), 2.5);
    EXPECT_LT(SecondsOf([&] { ExpectRefused(path); }), 2.5);
    ExpectPlays();
    EXPECT_LT(SecondsOf([&] { EndPlayers(); }), 1.0);
}

TEST_F(SlowFiles, ASeekThatNeverLandsHoldsUpTheOtherOneNoLongerThanASecond) {
    ASSERT_TRUE(LoadTwins(ClipPath("clip.mp4")) && Preview().Load(OnStick()));
    mediumGate.Close("/stick/");
    OrderTwins({.running = true, .seekTo = 4.0});
    EXPECT_TRUE(WaitUntil([&] { return Stage().Position() > 4.2; }, 2.5));
    EXPECT_EQ(Preview().Position(), 4.0);
}

} // namespace kirolane::tests
