// Every extension that the lists know, in a real container.

#include "crafted_files.h"
#include "engine_test.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace kirolane::tests {

namespace {

struct ContainerCase {
    const char* name; ///< a file of make_clips.sh, or one that the tests craft
    bool picture;
    double seconds = 5.0;
};

const ContainerCase kMovies[] = {
    {"clip.mov", true}, {"clip.qt", true},  {"clip.dv", true},   {"clip.m4v", true},   {"clip.mp4", true},
    {"clip.3g2", true}, {"clip.3gp", true}, {"clip.avi", true},  {"clip.divx", true},  {"clip.vob", true},
    {"clip.mpg", true}, {"clip.mpe", true}, {"clip.mpeg", true}, {"clip.m2v", true},   {"clip.wmv", true},
    {"clip.asf", true}, {"raw.mpeg", true}, {"raw.m4v", true},   {"stream.mpg", true}, {"silent.mp4", true},
};

const ContainerCase kSounds[] = {
    {"clip.asf", true},  {"clip.aif", false}, {"clip.aiff", false},    {"clip.aifc", false},
    {"clip.au", false},  {"clip.wav", false}, {"clip.mp3", false},     {"clip.mp2", false},
    {"clip.mp1", false}, {"clip.m2a", false}, {"clip.aac", false},     {"clip.m4a", false},
    {"clip.wma", false}, {"clip.mid", false}, {"headless.mp3", false}, {"cover.m4a", false, 2.0},
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
    ASSERT_TRUE(Sound().Load(File()));
    const double duration = Sound().Duration();
    EXPECT_NEAR(duration, GetParam().seconds, 0.1);
    EXPECT_EQ(Sound().Frames()->HasPicture(), GetParam().picture);
    Order(Sound(), {.running = true, .seekTo = 0.0});
    EXPECT_TRUE(WaitUntil([&] { return Sound().Position() > 0.4; }));
    Order(Sound(), {.running = true, .seekTo = 1.0});
    EXPECT_TRUE(WaitUntil([&] { return Sound().Position() > 1.2; }));
    EXPECT_LT(Sound().Position(), 1.7);
    Order(Sound(), {.running = true, .seekTo = duration - 0.6});
    EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
    EXPECT_EQ(Sound().Position(), duration);
    EXPECT_EQ(Sound().Frames()->HasFrame(), GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(Media, MovieContainer, ::testing::ValuesIn(kMovies), NameOf);
INSTANTIATE_TEST_SUITE_P(Media, SoundContainer, ::testing::ValuesIn(kSounds), NameOf);

} // namespace kirolane::tests
