// The screen itself, as the X server has it: what is put there without the main thread, and what Qt paints
// where that cannot be.

#include "player_test.h"
#include "x_server.h"

#include <algorithm>

namespace kirolane::tests {

namespace {

struct Way {
    const char* name;
    bool sharedMemory;
    const char* scale;
    bool handedOn = false;
};

class ScreenTest : public XServer, public PlayerTest, public ::testing::WithParamInterface<Way> {
protected:
    ScreenTest() : XServer(Options()), PlayerTest(XServer::Name()) {}
    ~ScreenTest() override { qunsetenv("QT_SCALE_FACTOR"); }
    void SetUp() override {
        std::string failure;
        ASSERT_TRUE(m_runtime->Start([] { Instance<ConsoleShow>()->Show(); }, failure)) << failure;
        m_console = Instance<ConsoleShow>();
        LayCurtain();
        if (GetParam().handedOn)
            Engine().HandOn();
    }
    static std::vector<std::string> Options() {
        qputenv("QT_SCALE_FACTOR", GetParam().scale);
        return GetParam().sharedMemory ? std::vector<std::string>{}
                                       : std::vector<std::string>{"-extension", "MIT-SHM"};
    }
    /// Of the player, or of another control of the console, on the screen.
    static QRect Area(const char* name = "QTM") {
        const QWidget* widget = Find("Mainform", name);
        const double scale = widget->devicePixelRatioF();
        const QPoint at = widget->mapTo(widget->window(), QPoint()) * scale;
        return {widget->window()->mapToGlobal(QPoint()) * scale + at, widget->size() * scale};
    }
    /// In units from the player's corner.
    [[nodiscard]] bool IsAt(QPoint at, QColor color) const {
        const double scale = Find("Mainform")->devicePixelRatioF();
        return Pixels({Area().topLeft() + at * scale, QSize(1, 1)}) == std::vector{color.rgb() & 0xFFFFFF};
    }
    /// While the event loop runs.
    [[nodiscard]] bool Shows(QPoint at, QColor color) const {
        return Until([&] { return IsAt(at, color); });
    }
    /// While it stands still.
    [[nodiscard]] bool Puts(QColor color) const { return Becomes(Area().bottomRight(), color); }
};

std::string NameOf(const ::testing::TestParamInfo<Way>& way) {
    return way.param.name;
}

std::vector<QRgb> PixelsOf(const QImage& image) {
    std::vector<QRgb> pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            pixels.push_back(image.pixel(x, y) & 0xFFFFFF);
    return pixels;
}

TEST_P(ScreenTest, PicturesAreTheEnginesToThePixel) {
    Open();
    Engine().MakePicture(kFirst);
    ASSERT_TRUE(Shows({1, 1}, kFirst));
    QImage picture(Engine().AskedSize(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x / 256) * 16 + y / 256));
    Engine().MakePicture(picture);
    EXPECT_TRUE(Until([&] { return Pixels({Area().topLeft(), picture.size()}) == PixelsOf(picture); }));
}

TEST_P(ScreenTest, TheScreenFollowsTheShow) {
    Open();
    Engine().MakePicture(kFirst);
    EXPECT_TRUE(Shows({1, 1}, kFirst));
    Open();
    EXPECT_TRUE(Shows({1, 1}, kFirst)) << "the last picture until the first new one";
    Engine().MakePicture(kSecond);
    EXPECT_TRUE(Shows({1, 1}, kSecond));
    Open(false);
    EXPECT_TRUE(Shows({1, 1}, Qt::black)) << "sound alone";
    Open();
    Engine().MakePicture(kFirst);
    EXPECT_TRUE(Shows({1, 1}, kFirst));

    const QPoint corner(299, 199);
    const QPoint outside(300, 199);
    Do([] {
        Get<MoviePlayer>("QTM")->SetWidth(300);
        Get<MoviePlayer>("QTM")->SetHeight(216);
    });
    EXPECT_TRUE(Until([&] { return !IsAt(outside, kFirst); }));
    EXPECT_TRUE(Shows(corner, kFirst)) << "stretched until one of the new size is there";
    Do([] { Get<Rectangle>("DummyBack")->SetVisible(true); });
    EXPECT_TRUE(Shows(corner, Qt::black)) << "a control in front";
    Do([] { Get<Rectangle>("DummyBack")->SetVisible(false); });
    EXPECT_TRUE(Shows(corner, kFirst));
    Do([this] { m_console->SetTop(m_console->Top() + 50); });
    EXPECT_TRUE(Shows(corner, kFirst));
    Do([this] { m_console->Hide(); });
    Engine().MakePicture(kSecond);
    Do([this] { m_console->Show(); });
    EXPECT_TRUE(Shows(corner, kSecond));

    Close();
    EXPECT_TRUE(Shows({1, 1}, Qt::black)) << "the curtain";
    const auto curtain = Pixels(Area("DummyQTM"));
    EXPECT_TRUE(std::any_of(curtain.begin(), curtain.end(), [](QRgb pixel) { return pixel != 0; }));
}

INSTANTIATE_TEST_SUITE_P(, ScreenTest,
                         ::testing::Values(Way{"Put", true, "1"}, Way{"Painted", false, "1"},
                                           Way{"PutFine", true, "2"}, Way{"PaintedFine", false, "2"},
                                           Way{"PutBetween", true, "1.5"},
                                           Way{"PaintedBetween", false, "1.5"}),
                         NameOf);

/// The event loop stands still but where the test says otherwise.
class HeldTest : public ScreenTest {};

TEST_P(HeldTest, EveryPictureOfASecondIsShown) {
    Open();
    Engine().MakePicture(kFirst);
    ASSERT_TRUE(Shows({1, 1}, kFirst));
    for (int picture = 0; picture < 30; ++picture) {
        const QColor color(picture * 8, 255 - picture, 7);
        Engine().MakePicture(color);
        EXPECT_TRUE(Puts(color)) << picture;
    }
    ASSERT_TRUE(Engine().Load("next.mov"));
    Engine().MakeLatePicture(Qt::white); // into the same memory, where that has been handed on
    Cover(Area().adjusted(50, 50, 50, 50));
    Uncover();
    EXPECT_TRUE(Puts(GetParam().handedOn ? QColor(Qt::white) : QColor(29 * 8, 255 - 29, 7)))
        << "what stood before it goes, and the next is not there yet";
    Engine().MakePicture(kSecond);
    EXPECT_TRUE(Puts(kSecond));
}

INSTANTIATE_TEST_SUITE_P(, HeldTest,
                         ::testing::Values(Way{"Copied", true, "1"}, Way{"HandedOn", true, "1", true}),
                         NameOf);

} // namespace

} // namespace kirolane::tests
