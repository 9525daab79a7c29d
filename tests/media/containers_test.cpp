// Every extension that the lists know, in a real container.

#include "crafted_files.h"
#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace kirolane::tests {

namespace {

struct ContainerCase {
    const char* name; ///< a file of make_clips.sh, or one that the tests craft
    double seconds = 5.0;
};

const ContainerCase kMovies[] = {
    {"clip.mov"},   {"clip.qt"},     {"clip.dv"},        {"clip.m4v"},   {"clip.mp4"},       {"clip.3g2"},
    {"clip.3gp"},   {"clip.avi"},    {"clip.divx"},      {"clip.vob"},   {"clip.mpg"},       {"clip.mpe"},
    {"clip.mpeg"},  {"clip.m2v"},    {"clip.wmv"},       {"clip.asf"},   {"raw.mpeg"},       {"raw.m4v"},
    {"stream.mpg"}, {"silent.mp4"},  {"uneven.mp4"},     {"edited.mp4"}, {"late_clock.mpg"}, {"editor.mov"},
    {"odd.mp4"},    {"ten_bit.mp4"}, {"full_range.mp4"}, {"tiny.mp4"},   {"fast.mp4"},       {"wrapped.mpg"},
};

const ContainerCase kSounds[] = {
    {"clip.asf"}, {"clip.aif"}, {"clip.aiff"},    {"clip.aifc"},      {"clip.au"},    {"clip.wav"},
    {"clip.mp3"}, {"clip.mp2"}, {"clip.mp1"},     {"clip.m2a"},       {"clip.aac"},   {"clip.m4a"},
    {"clip.wma"}, {"clip.mid"}, {"headless.mp3"}, {"cover.m4a", 2.0}, {"silent.mp4"}, {"brief_sound.mp4"},
};

std::string NameOf(const ::testing::TestParamInfo<ContainerCase>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

} // namespace

class ContainerTest : public EngineTest, public ::testing::WithParamInterface<ContainerCase> {
protected:
    std::string File() {
        const std::string name = GetParam().name;
        if (name == "clip.mp1")
            return m_folder.Write(name, LayerOneSilence(5.0));
        if (name == "clip.mid")
            return m_folder.Write(name, MidiFile({{0.0, 2.0}, {2.0, 2.7, 57}}));
        return ClipPath(name);
    }
    TemporaryFolder m_folder;
};

class MovieContainer : public ContainerTest {};
class SoundContainer : public ContainerTest {};

TEST_P(MovieContainer, PlaysInBothTwinsSeeksExactlyAndEndsAtItsDuration) {
    const std::string file = File();
    ASSERT_TRUE(Preview().Load(file));
    ASSERT_TRUE(Stage().Load(file));
    const double duration = Stage().Duration();
    EXPECT_NEAR(duration, GetParam().seconds, 0.1);
    EXPECT_EQ(Preview().Duration(), duration);
    for (PlayerEngine* engine : {&Preview(), &Stage()}) {
        ASSERT_TRUE(WaitUntil([&] { return engine->Frames()->HasFrame(); }));
        EXPECT_TRUE(engine->Frames()->HasPicture());
        EXPECT_NEAR(*Grey(*engine), GreyAt(0.0), 8.0);
    }
    OrderTwins({.running = true, .seekTo = 0.0});
    EXPECT_TRUE(WaitUntil([&] { return Stage().Position() > 0.4 && Preview().Position() > 0.4; }));
    EXPECT_NEAR(*Grey(Stage()), GreyAt(Stage().Position()), 15.0);
    for (const double target : {4.5, 2.2}) { // halted, forth and back: the very picture
        OrderTwins({.running = false, .seekTo = target});
        for (PlayerEngine* engine : {&Preview(), &Stage()})
            EXPECT_TRUE(WaitUntil([&] { return std::abs(*Grey(*engine) - GreyAt(target)) < 5.0; }, 2.0))
                << "at " << target << " it shows " << *Grey(*engine) << ", not " << GreyAt(target);
    }
    OrderTwins({.running = true, .seekTo = duration - 0.6});
    EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
    EXPECT_EQ(Stage().Position(), duration);
    EXPECT_EQ(Preview().Position(), duration);
}

TEST_P(SoundContainer, PlaysSeeksAndEndsAtItsDuration) {
    CapturedStderr lines;
    ASSERT_TRUE(Sound().Load(File()));
    const double duration = Sound().Duration();
    EXPECT_NEAR(duration, GetParam().seconds, 0.1);
    Order(Sound(), {.running = true, .seekTo = 0.0});
    EXPECT_TRUE(WaitUntil([&] { return Sound().Position() > 0.4; }));
    Order(Sound(), {.running = true, .seekTo = 1.0});
    EXPECT_TRUE(WaitUntil([&] { return Sound().Position() > 1.2; }));
    EXPECT_LT(Sound().Position(), 1.7);
    Order(Sound(), {.running = true, .seekTo = duration - 0.6});
    EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
    EXPECT_EQ(Sound().Position(), duration);
    const bool silent = std::string_view(GetParam().name) == "silent.mp4";
    EXPECT_EQ(Sound().Frames()->HasPicture(), silent)
        << "nobody sees it: it is decoded where nothing else plays";
    EXPECT_TRUE(lines.Lines().empty()) << "a sound shorter than its pictures is no fault";
}

INSTANTIATE_TEST_SUITE_P(Media, MovieContainer, ::testing::ValuesIn(kMovies), NameOf);
INSTANTIATE_TEST_SUITE_P(Media, SoundContainer, ::testing::ValuesIn(kSounds), NameOf);

} // namespace kirolane::tests
