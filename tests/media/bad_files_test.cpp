// Files that cannot be played: one line that says why, and the players go on.

#include "engine_test.h"
#include "gates.h"
#include "support/captured_stderr.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

#include <cmath>
#include <filesystem>
#include <random>
#include <sys/stat.h>

namespace kirolane::tests {

namespace {

/// The clip up to the first byte after that word.
std::string UpTo(const std::string& clip, const std::string& word) {
    const std::string content = Content(clip);
    return content.substr(0, content.find(word) + word.size());
}

std::string RandomBytes(std::size_t count) {
    std::mt19937 random(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

} // namespace

class BadFiles : public EngineTest {
protected:
    using EngineTest::EngineTest;

    void ExpectPlays(const std::string& path = ClipPath("clip.mp4")) {
        PlayTwins(path);
        EXPECT_NEAR(Stage().Duration(), 5.0, 0.1) << path;
        EXPECT_TRUE(Reaches(Preview(), 0.1) && Reaches(Stage(), 0.1)) << path;
        Unload();
    }
    /// Neither twin opens it; one line names it.
    void ExpectRefused(const std::string& path) {
        CapturedStderr lines;
        EXPECT_FALSE(Preview().Load(path)) << path;
        EXPECT_FALSE(Stage().Load(path)) << path;
        Unload();
        const auto said = lines.Lines();
        ASSERT_EQ(said.size(), 1U) << path;
        EXPECT_NE(said[0].find(path), std::string::npos) << said[0];
        EXPECT_EQ(Stage().Duration(), 0.0);
        EXPECT_FALSE(Stage().Frames()->HasFrame());
        EXPECT_FALSE(Stage().Frames()->HasPicture());
    }

    TemporaryFolder m_folder;
};

TEST_F(BadFiles, WhatCannotBePlayedIsRefusedWithOneLineAndTheNextPlays) {
    const std::string files[] = {
        m_folder.Write("empty.mov", ""),
        m_folder.Write("text.mp4", "This is no movie.\n"),
        m_folder.Write("random.mpg", RandomBytes(200'000)),
        m_folder.Write("random.mp3", RandomBytes(200'000)),
        m_folder.Write("no-index.mov", Content("clip.mov").substr(0, 20'000)),
        m_folder.Write("index-only.mp4", UpTo("clip.mp4", "mdat")),
        m_folder.Write("header-only.avi", UpTo("clip.avi", "movi")),
        m_folder.Write("header-only.wav", UpTo("clip.wav", "data")),
        m_folder.Write("garbage.mp4", UpTo("clip.mp4", "mdat") + RandomBytes(50'000)),
        m_folder.Write("cut.mid", "MThd"),
        m_folder.MakeFolder("folder.mp4"),
        m_folder.Path("missing.mov"),
    };
    for (const std::string& file : files)
        ExpectRefused(file);
    ASSERT_EQ(mkfifo(m_folder.Path("fifo.mov").c_str(), 0600), 0);
    EXPECT_LT(SecondsOf([&] { ExpectRefused(m_folder.Path("fifo.mov")); }), 1.0) << "it must not be opened";
    ExpectPlays();
}

TEST_F(BadFiles, AFileWithoutReadPermissionIsRefused) {
    EndPlayers(); // the child makes its own
    const std::string path = m_folder.Write("secret.mp4", Content("clip.mp4"));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    RunAsOrdinaryUser(m_folder.Path(), [&] {
        mpv::MpvMedia media({});
        const auto player = media.MakePlayer("player");
        CapturedStderr lines;
        EXPECT_FALSE(player->Load(path));
        EXPECT_EQ(lines.Lines(), std::vector<std::string>{"kirolane: " + path + ": Permission denied"});
    });
}

TEST_F(BadFiles, HolesAndFlipsNeitherCrashNorHang) {
    // Anywhere: whether it plays is no matter.
    std::mt19937 random(11);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    CapturedStderr lines;
    for (const char* clip :
         {"clip.mov", "clip.avi", "clip.mpg", "clip.wmv", "clip.m2v", "clip.mp3", "clip.aiff"}) {
        for (const std::size_t reach : {200U, 4000U, 1'000'000U}) {
            std::string content = Content(clip);
            for (int i = 0; i < 60; ++i)
                content[below(std::min(reach, content.size()))] = static_cast<char>(random());
            const std::string path = m_folder.Write(clip, content);
            EXPECT_LT(SecondsOf([&] {
                          const bool opened = LoadTwins(path);
                          OrderTwins({.unload = !opened, .running = opened, .seekTo = 1.0});
                      }),
                      3.0)
                << clip;
            EXPECT_TRUE(!std::isnan(Stage().Duration()) && !std::isinf(Stage().Duration()));
        }
    }
    lines.Lines();
    ExpectPlays();
}

TEST_F(BadFiles, AFileThatGoesAwayWhileItPlaysStopsNothing) {
    const std::string path = m_folder.Write("clip.mp4", Content("clip.mp4"));
    PlayTwins(path);
    std::filesystem::remove(path);
    EXPECT_TRUE(Reaches(Stage(), 0.3));
    CapturedStderr lines;
    Order(Preview(), {.running = true, .seekTo = 3.0}); // it has to be opened again
    EXPECT_TRUE(WaitUntil([&] { return Preview().AtEnd(); }));
    EXPECT_EQ(lines.Lines(), std::vector<std::string>{"kirolane: " + path + ": cannot be read"});
    EXPECT_TRUE(Reaches(Stage(), 1.5));
    EXPECT_NEAR(*Grey(Preview()), GreyAt(Stage().Position()), 8.0) << "the audience's pictures";
    ExpectRefused(path);
    ExpectPlays();
}

TEST_F(BadFiles, NamesOfAnyBytesOpen) {
    for (const char* name :
         {"映画 その１.MP4", "\xFF\xFE\x80.mov", "-pause=no", "%20%s%n.mp4", "a:b\\c\n.mp4", "memory:.MOV"})
        ExpectPlays(m_folder.Write(name, Content("clip.mp4")));
    m_folder.MakeFolder("edl:");
    ExpectPlays(m_folder.Write("edl://clip.mp4", Content("clip.mp4")));
}

/// With patience enough for another player to be made, and no more.
class SlowFiles : public BadFiles {
protected:
    SlowFiles()
        : BadFiles(mpv::MpvOptions{.audioOutput = "null", .loadLimit = std::chrono::milliseconds(1500)}) {}
    ~SlowFiles() override { mediumGate.Open(); }
    /// A file on a medium that can stop answering.
    std::string m_path = m_folder.MakeFolder("stick") + "/clip.dv";
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
    m_folder.Write("stick/clip.dv", Content("clip.dv"));
    PlayTwins(m_path);
    ASSERT_TRUE(Reaches(Stage(), 0.1));
    mediumGate.Close(m_folder.Path("stick"));
    ASSERT_TRUE(WaitUntil([&] { return mediumGate.Waiting() == 1; })) << "it is read for both";
    Preview().Release();
    Stage().Release();
    EXPECT_LT(SecondsOf([&] { ExpectPlays(); }), 2.5);
    EXPECT_LT(SecondsOf([&] { ExpectRefused(m_path); }), 2.5);
    ExpectPlays();
    EXPECT_LT(SecondsOf([&] { EndPlayers(); }), 1.0);
}

TEST_F(SlowFiles, ASeekThatNeverLandsHoldsUpTheOtherOneNoLongerThanASecond) {
    m_folder.Write("stick/clip.dv", Content("clip.dv"));
    ASSERT_TRUE(LoadTwins(ClipPath("clip.mp4")) && Preview().Load(m_path));
    mediumGate.Close(m_folder.Path("stick"));
    OrderTwins({.running = true, .seekTo = 4.0});
    EXPECT_TRUE(WaitUntil([&] { return Stage().Position() > 4.2; }, 2.5));
    EXPECT_EQ(Preview().Position(), 4.0);
}

} // namespace kirolane::tests
