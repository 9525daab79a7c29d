// What cameras and editors make: pictures that are stored lying on their side, mirrored, interlaced.

#include "engine_test.h"
#include "support/captured_stderr.h"
#include "support/temporary_folder.h"

#include <array>
#include <cmath>
#include <utility>

namespace kirolane::tests {

namespace {

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
    for (const char* seen : {"1234", "3142", "4321", "2413", "2143", "3412", "1324", "4231"}) {
        std::array<int, 4> upright{};
        for (std::size_t i = 0; i < 4; ++i)
            upright[i] = 20 + 40 * (seen[i] - '0');
        const std::string path = ClipPath("quarters_" + std::string(seen) + ".mp4");
        ASSERT_TRUE(Preview().Load(path) && Stage().Load(path));
        const auto shown = [&] { return Quarters(Stage()) == upright && Quarters(Preview()) == upright; };
        EXPECT_TRUE(WaitUntil(shown, 3.0)) << seen;
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
