// What cameras and editors make: pictures that are stored lying on their side, mirrored, interlaced.

#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

#include <array>
#include <cmath>
#include <utility>

namespace kirolane::tests {

namespace {

/// How a stored picture is to be shown: a point x, y of it goes to a x + c y, b x + d y.
struct Matrix {
    int a, b, c, d;
};

/// The clip whose header says so of its pictures.
std::string Turned(const std::string& clip, const Matrix& matrix) {
    constexpr std::size_t kToMatrix = 44; // from the word
    std::string content = Content(clip);
    const std::size_t place = content.find("tkhd") + kToMatrix;
    for (const auto& [at, number] :
         {std::pair{0U, matrix.a}, {4U, matrix.b}, {12U, matrix.c}, {16U, matrix.d}}) // 16.16 fixed point
        for (std::size_t i = 0; i < 4; ++i)
            content[place + at + i] =
                static_cast<char>(static_cast<std::uint32_t>(number) << 16 >> (24 - 8 * i));
    return content;
}

/// The clip with other bytes in all places after that word.
std::string Forged(const std::string& clip, const std::string& word, std::size_t offset,
                   const std::string& bytes) {
    std::string content = Content(clip);
    for (std::size_t at = content.find(word); at != std::string::npos;
         at = content.find(word, at + word.size()))
        content.replace(at + offset, bytes.size(), bytes);
    return content;
}

} // namespace

class Footage : public EngineTest {
protected:
    /// The greys of the quarters, row by row, as luma.
    static std::array<int, 4> Quarters(PlayerEngine& engine) {
        std::array<int, 4> greys{};
        engine.Frames()->Visit([&](const FrameView& view) {
            for (int i = 0; i < 4; ++i) {
                const int x = view.width * (1 + 2 * (i % 2)) / 4;
                const int y = view.height * (1 + 2 * (i / 2)) / 4;
                const int green = view.pixels[static_cast<std::ptrdiff_t>(y) * view.stride + 4 * x + 1];
                greys[static_cast<std::size_t>(i)] =
                    (green * 219 / 255 + 16 + 10) / 20 * 20; // to the next of them
            }
        });
        return greys;
    }
    /// The share of pixels that stand out from the lines above and below.
    static double Combs(PlayerEngine& engine) {
        int combs = 0;
        int all = 1;
        engine.Frames()->Visit([&](const FrameView& view) {
            for (int y = 1; y + 1 < view.height; ++y)
                for (int x = 0; x < view.width; ++x, ++all) {
                    const std::uint8_t* pixel =
                        view.pixels + static_cast<std::ptrdiff_t>(y) * view.stride + 4 * x + 1;
                    const int above = pixel[0] - pixel[-view.stride];
                    const int below = pixel[0] - pixel[view.stride];
                    combs += above * below > 40 * 40 ? 1 : 0;
                }
        });
        return static_cast<double>(combs) / all;
    }
    void Show(const std::string& path) {
        ASSERT_TRUE(Preview().Load(path) && Stage().Load(path)) << path;
        OrderTwins({.running = true, .seekTo = 0.0});
        EXPECT_TRUE(WaitUntil([&] { return Stage().Frames()->HasFrame() && Preview().Frames()->HasFrame(); }))
            << path;
    }

    TemporaryFolder m_folder;
};

TEST_F(Footage, IsUprightInBothTwinsHoweverItIsStored) {
    for (const Matrix& m : {Matrix{1, 0, 0, 1},
                            {0, 1, -1, 0},
                            {-1, 0, 0, -1},
                            {0, -1, 1, 0},
                            {-1, 0, 0, 1},
                            {1, 0, 0, -1},
                            {0, 1, 1, 0},
                            {0, -1, -1, 0}}) {
        std::array<int, 4> upright{};
        for (int i = 0; i < 4; ++i) { // each quarter goes to where its middle goes
            const int x = i % 2 * 2 - 1;
            const int y = i / 2 * 2 - 1;
            upright[static_cast<std::size_t>((m.a * x + m.c * y > 0 ? 1 : 0) +
                                             (m.b * x + m.d * y > 0 ? 2 : 0))] =
                60 + 40 * (i % 2) + 80 * (i / 2);
        }
        const std::string path = m_folder.Write("turned.mp4", Turned("quarters.mp4", m));
        ASSERT_TRUE(Preview().Load(path) && Stage().Load(path));
        const auto shown = [&] { return Quarters(Stage()) == upright && Quarters(Preview()) == upright; };
        EXPECT_TRUE(WaitUntil(shown, 3.0)) << m.a << m.b << m.c << m.d;
        OrderTwins({.running = true, .seekTo = 0.5});
        EXPECT_TRUE(WaitUntil([&] { return Stage().Position() > 0.8 && shown(); }));
        Order(Preview(), {.running = false, .seekTo = 0.2}); // it then decodes for itself
        EXPECT_TRUE(
            WaitUntil([&] { return Stage().Position() > 1.0 && Preview().Position() == 0.2 && shown(); }));
        Unload({&Preview(), &Stage()});
        EXPECT_TRUE(Sound().Load(path));
    }
}

TEST_F(Footage, PicturesThatAreMarkedAsInterlacedLoseTheirCombsAndOthersAreLeftAlone) {
    for (const auto& [clip, combed] :
         {std::pair{"interlaced.mp4", false}, {"interlaced.mpg", false}, {"combed.mp4", true}}) {
        Preview().Frames()->SetSize(176, 144);
        Stage().Frames()->SetSize(176, 144);
        ASSERT_TRUE(Preview().Load(ClipPath(clip)) && Stage().Load(ClipPath(clip)));
        OrderTwins({.running = false, .seekTo = 0.0});
        for (const double target : {0.0, 0.5}) {
            OrderTwins({.running = false, .seekTo = target});
            for (PlayerEngine* engine : {&Preview(), &Stage()})
                EXPECT_TRUE(WaitUntil(
                    [&] { return engine->Frames()->HasFrame() && (Combs(*engine) > 0.1) == combed; }, 3.0))
                    << clip << " at " << target << ": " << Combs(*engine);
        }
        OrderTwins({.running = true, .seekTo = 1.0});
        EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); }));
        EXPECT_EQ(Combs(Stage()) > 0.1, combed);
        Unload({&Preview(), &Stage()});
    }
}

TEST_F(Footage, PlaysWhatCanBeDecodedOfIt) {
    Show(ClipPath("large.mp4"));
    const std::string pictures[] = {
        m_folder.Write("unknown.mp4", Forged("clip.mp4", "avc1", 0, "xqxq")),
        m_folder.Write("broken.mp4", Forged("clip.mp4", "avcC", 0, "xqxq")),
        m_folder.Write("giant.mov", Forged("editor.mov", "icpf", 12, "\x3E\x80\x3E\x80"))};
    for (const std::string& path : pictures) {
        CapturedStderr lines;
        Preview().Release();
        Stage().Release();
        ASSERT_TRUE(Preview().Load(path) && Stage().Load(path)) << path;
        OrderTwins({.running = true, .seekTo = 4.0});
        EXPECT_TRUE(WaitUntil([&] { return Stage().AtEnd() && Preview().AtEnd(); })) << path;
        EXPECT_FALSE(Stage().Frames()->HasPicture() || Preview().Frames()->HasPicture()) << path;
        const auto said = lines.Lines();
        ASSERT_EQ(said.size(), 1U) << path;
        EXPECT_NE(said[0].find(path + ": its pictures"), std::string::npos) << said[0];
    }
    EXPECT_LT(Status("VmHWM"), 900'000) << "kilobytes";
    const std::string sound = m_folder.Write("sound.mp4", Forged("clip.mp4", "mp4a", 0, "xqxq"));
    Show(sound);
    EXPECT_TRUE(Sound().Load(sound));
}

} // namespace kirolane::tests
