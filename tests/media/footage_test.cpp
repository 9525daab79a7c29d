// What cameras and editors make: pictures that are stored lying on their side, mirrored, interlaced.

#include "engine_test.h"
#include "support/temporary_folder.h"

#include <array>
#include <fstream>
#include <iterator>

namespace kirolane::tests {

namespace {

/// How a stored picture is to be shown: a point x, y of it goes to a x + c y, b x + d y.
struct Matrix {
    int a, b, c, d;
};

/// The clip whose header says so of its pictures.
std::string Turned(const std::string& clip, const Matrix& matrix) {
    constexpr std::size_t kToMatrix = 44; // from the word
    std::ifstream file(ClipPath(clip), std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    const std::size_t place = content.find("tkhd") + kToMatrix;
    for (const auto& [at, number] :
         {std::pair{0U, matrix.a}, {4U, matrix.b}, {12U, matrix.c}, {16U, matrix.d}}) // 16.16 fixed point
        for (std::size_t i = 0; i < 4; ++i)
            content[place + at + i] =
                static_cast<char>(static_cast<std::uint32_t>(number) << 16 >> (24 - 8 * i));
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

} // namespace kirolane::tests
