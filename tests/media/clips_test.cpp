// Files of every kind, in every container that the lists know: what is seen and heard of each, how long, and
// what is said about it.

#include "backends/mpv/deck_options.h"
#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/document.h"

#include <algorithm>
#include <sys/resource.h>

namespace kirolane::tests {

namespace {

constexpr const char* kGrey = "grey"; ///< of the whole picture; it tells the time
constexpr const char* kCombs = "combs";
constexpr const char* kNoCombs = "no combs";
constexpr const char* kNothing = "nothing";

struct Clip {
    const char* name;          ///< of make_clips.sh
    const char* looks = kGrey; ///< or the four quarters from the top left, 4 the brightest
    double seconds = 5.0;
    bool sounds = true;
    double end = seconds;       ///< of its data
    double last = 0.4;          ///< seconds before that end from which it is played out
    const char* says = nullptr; ///< the cause in the one line about it
};

// clang-format off
const Clip kClips[] = {
    // What the lists take for a movie.
    {"clip.mov"}, {"clip.qt"}, {"clip.dv"}, {"clip.m4v"}, {"clip.mp4"}, {"clip.3g2"}, {"clip.3gp"}, {"clip.avi"},
    {"clip.vob"}, {"clip.mpg"}, {"clip.mpeg"}, {"clip.wmv"}, {"clip.asf"}, {"stream.mpg"},
    {.name = "clip.m2v", .sounds = false}, {.name = "raw.mpeg", .sounds = false}, {.name = "raw.m4v", .sounds = false},
    // And for a sound.
    {"clip.aif", kNothing}, {"clip.aiff", kNothing}, {"clip.aifc", kNothing}, {"clip.au", kNothing},
    {"clip.wav", kNothing}, {"clip.mp3", kNothing}, {"clip.mp2", kNothing}, {"clip.mp1", kNothing},
    {"clip.aac", kNothing}, {"clip.m4a", kNothing}, {"clip.wma", kNothing}, {"clip.mid", kNothing},
    {"headless.mp3", kNothing}, {"cover.m4a", kNothing, 2.0},
    // What cameras and editors make of them.
    {"uneven.mp4"}, {"edited.mp4"}, {"late_clock.mpg"}, {"wrapped.mpg"}, {"editor.mov"}, {"odd.mp4"}, {"ten_bit.mp4"},
    {"full_range.mp4"}, {"tiny.mp4"}, {"fast.mp4"}, {"titled.mkv"}, {.name = "silent.mp4", .sounds = false},
    {.name = "brief_sound.mp4", .last = 2.8}, {.name = "late_sound.mkv", .last = 3.2},
    {"quarters_1234.mp4", "1234", 2.0}, {"quarters_3142.mp4", "3142", 2.0}, {"quarters_4321.mp4", "4321", 2.0},
    {"quarters_2413.mp4", "2413", 2.0}, {"quarters_2143.mp4", "2143", 2.0}, {"quarters_3412.mp4", "3412", 2.0},
    {"quarters_1324.mp4", "1324", 2.0}, {"quarters_4231.mp4", "4231", 2.0},
    {"interlaced.mp4", kNoCombs, 2.0, false}, {"interlaced.mpg", kNoCombs, 2.0, false},
    {"combed.mp4", kCombs, 2.0, false},
    // What lies or is broken in part.
    {.name = "early.mp4", .end = 3.0, .says = "the data ends at"},
    {.name = "unknown.mp4", .looks = kNothing, .says = "its pictures cannot be decoded"},
    {.name = "broken.mp4", .looks = kNothing, .says = "its pictures cannot be decoded"},
    {.name = "giant.mov", .looks = kNothing, .says = "its pictures cannot be decoded"},
    {.name = "huge.mp4", .looks = kNothing, .says = "its pictures cannot be decoded"},
    {.name = "mute.mp4", .sounds = false}, {"long.mp4"}, {"brief.mp4"}, {"distant.wma", kNothing},
};
// clang-format on

std::string NameOf(const ::testing::TestParamInfo<Clip>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

} // namespace

class Clips : public EngineTest, public ::testing::WithParamInterface<Clip> {
protected:
    /// The share of pixels that stand out from the lines above and below.
    static double Combs(const FrameView& view) {
        int combs = 0;
        for (int y = 1; y + 1 < view.height; ++y)
            for (int x = 0; x < view.width; ++x) {
                const auto* pixel = view.pixels + static_cast<std::ptrdiff_t>(y) * view.stride + 4 * x + 1;
                combs += (pixel[0] - pixel[-view.stride]) * (pixel[0] - pixel[view.stride]) > 1600 ? 1 : 0;
            }
        return static_cast<double>(combs) / (view.width * view.height);
    }
    static bool Looks(PlayerEngine& engine, double seconds, double within) {
        const std::string looks = GetParam().looks;
        if (looks == kNothing)
            return !engine.Frames()->HasPicture();
        bool as = engine.Frames()->HasFrame() && engine.Frames()->HasPicture();
        engine.Frames()->Visit([&](const FrameView& view) {
            if (looks == kCombs || looks == kNoCombs) {
                as = (Combs(view) > 0.1) == (looks == kCombs);
                return;
            }
            const auto shows = [&](double x, double y, double wanted) {
                as = as && std::abs(GreenAt(view, x, y) - GreyAt(wanted)) < within;
            };
            for (int i = 0; i < 4; ++i)
                shows(i % 2 == 0 ? 0.25 : 0.75, i < 2 ? 0.25 : 0.75,
                      looks == kGrey ? seconds : looks[i] - '0');
            for (double x = 0.125; looks == kGrey && x < 1.0; x += 0.125) // where titles would stand
                shows(x, 0.875, seconds);
        });
        return as;
    }
    void ExpectBothLook(double seconds) {
        for (PlayerEngine* engine : {&Preview(), &Stage()})
            EXPECT_TRUE(WaitUntil([&] { return Looks(*engine, seconds, 7.0); }, 2.0))
                << "at " << seconds << " in the " << (engine == &Stage() ? "stage" : "preview") << ": "
                << Grey(*engine);
    }
};

TEST_P(Clips, PlaysInBothTwinsAndAsASoundSeeksExactlyAndEndsAtItsDuration) {
    const Clip& clip = GetParam();
    CapturedStderr lines;
    const std::string file = ClipPath(clip.name);
    for (PlayerEngine* engine : {&Preview(), &Stage()})
        engine->Frames()->SetSize(176, 144);
    ASSERT_TRUE(LoadTwins(file));
    const double duration = Stage().Duration();
    EXPECT_NEAR(duration, clip.seconds, 0.1);
    EXPECT_EQ(Preview().Duration(), duration);
    ExpectBothLook(0.0);
    OrderTwins({.running = true, .seekTo = 0.0});
    EXPECT_TRUE(Reaches(Stage(), 0.3) && Reaches(Preview(), 0.3));
    EXPECT_TRUE(Looks(Stage(), Stage().Position(), 14.0)) << "while it plays";
    for (const double target :
         {clip.end * 0.9, clip.end * 0.44}) { // halted, forth and back: the very picture
        OrderTwins({.running = false, .seekTo = target});
        ExpectBothLook(target);
    }
    Order(Preview(), {.running = false, .seekTo = 0.2}); // it then decodes for itself
    EXPECT_TRUE(WaitUntil([&] { return Looks(Preview(), 0.2, 7.0); }, 2.0)) << "alone";
    OrderTwins({.running = true, .seekTo = clip.end - clip.last});
    EXPECT_TRUE(WaitUntil([&] {
        EXPECT_LE(std::max(Stage().Position(), Preview().Position()), duration);
        const double distance = Distance();
        EXPECT_TRUE(Stage().AtEnd() || std::abs(distance) < 0.1) << distance;
        return Stage().AtEnd() && Preview().AtEnd();
    }));
    EXPECT_EQ(Stage().Position(), duration);
    EXPECT_EQ(Preview().Position(), duration);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    EXPECT_LT(usage.ru_maxrss, 900'000) << "kilobytes";
    Unload();

    ASSERT_TRUE(Sound().Load(file));
    EXPECT_NEAR(Sound().Duration(), clip.seconds, 0.1);
    const double from = clip.end * 0.3; // with sound to come, or soon
    Order(Sound(), {.running = true, .seekTo = from});
    EXPECT_TRUE(Reaches(Sound(), from + 0.2));
    EXPECT_LT(Sound().Position(), from + 0.7);
    EXPECT_FALSE(clip.sounds && Sound().Frames()->HasPicture())
        << "nobody sees it: it is decoded where nothing else plays";
    Order(Sound(), {.running = true, .seekTo = clip.end - 0.4});
    EXPECT_TRUE(WaitUntil([&] { return Sound().AtEnd(); }));
    EXPECT_EQ(Sound().Position(), Sound().Duration());

    const auto said = lines.Lines();
    EXPECT_EQ(said.size(), clip.says != nullptr ? 1U : 0U);
    for (const std::string& line : said)
        EXPECT_TRUE(clip.says != nullptr && line.find(file + ": " + clip.says) != std::string::npos) << line;
}

TEST(FormatsTest, TheDocumentTellsTheContainersAndWhichExtensionsHaveAClip) {
    std::string names;
    for (const auto& row : DocumentRows("formats.md", 2))
        names += (names.empty() ? "" : ",") + row[0];
    EXPECT_EQ(names, mpv::kFormats);
    for (const auto& row : DocumentRows("formats.md", 4))
        EXPECT_EQ(std::any_of(std::begin(kClips), std::end(kClips),
                              [&](const Clip& clip) { return std::string(clip.name).ends_with(row[0]); }),
                  !row[3].empty())
            << row[0];
}

INSTANTIATE_TEST_SUITE_P(Media, Clips, ::testing::ValuesIn(kClips), NameOf);

} // namespace kirolane::tests
