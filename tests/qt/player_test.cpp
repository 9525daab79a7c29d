// What the audience sees: pictures, the curtain, and the change from one to the other.

#include "contract/canvas.h"
#include "contract/movieplayer.h"
#include "contract/rectangle.h"
#include "qt_test.h"

namespace kirolane::tests {

namespace {

const QColor kFirst(200, 30, 40);
const QColor kSecond(20, 160, 60);
const QColor kDark(Qt::black);
const QColor kCurtain; ///< it is up

class PlayerTest : public QtTest {
protected:
    using QtTest::QtTest;
    void SetUp() override {
        QtTest::SetUp();
        Do([] { // the curtain comes over the player
            Get<Rectangle>("DummyBack")->SetLeft(11);
            Get<Rectangle>("DummyBack")->SetTop(28);
            Get<Canvas>("DummyQTM")->SetLeft(91);
            Get<Canvas>("DummyQTM")->SetTop(88);
        });
    }
    PictureEngine& Engine() { return m_media.Player("Mainform.QTM"); }

    /// As an open does it: whatever is on is closed, and the next is shown in its place, in one handler.
    void Open(bool withPicture = true) {
        Engine().SetNextHasPicture(withPicture);
        Do([] {
            const auto player = Get<MoviePlayer>("QTM");
            ShowCurtain(true);
            player->SetMovie(nullptr);
            player->SetMovie(Ref<Movie>(std::make_shared<Movie>("clip.mov")));
            player->SetWidth(320);
            player->SetHeight(256);
            ShowCurtain(false);
        });
    }
    void Close() {
        Do([] {
            Get<MoviePlayer>("QTM")->SetMovie(nullptr);
            ShowCurtain(true);
        });
    }
    static void ShowCurtain(bool shown) {
        Get<MoviePlayer>("QTM")->SetVisible(!shown);
        Get<Rectangle>("DummyBack")->SetVisible(shown);
        Get<Canvas>("DummyQTM")->SetVisible(shown);
    }
    /// What is seen in the player's place; all of the curtain and nothing of the player, or the other way
    /// round.
    static QColor Seen() {
        const bool up = Find("Mainform", "DummyBack")->isVisible();
        EXPECT_EQ(Find("Mainform", "DummyQTM")->isVisible(), up);
        EXPECT_EQ(Find("Mainform", "QTM")->isVisible(), !up);
        return up ? kCurtain : Look("Mainform", "QTM").pixelColor(160, 120);
    }
};

TEST_F(PlayerTest, TheCurtainAndTheLastPictureStayUntilTheNextIsThereButOneSecond) {
    const auto open = [&] { Open(); };
    const auto sound = [&] { Open(false); };
    const auto close = [&] { Close(); };
    const auto wait = [&] { EXPECT_TRUE(Until([] { return Seen() != kCurtain; })); };
    const auto first = [&] { Engine().MakePicture(kFirst); };
    const auto second = [&] { Engine().MakePicture(kSecond); };
    const std::pair<std::function<void()>, QColor> steps[] = {
        {open, kCurtain},  {wait, kDark},    {close, kCurtain}, {open, kCurtain},
        {wait, kDark}, // each time
        {close, kCurtain}, {open, kCurtain}, {first, kFirst},   {open, kFirst},
        {second, kSecond}, {sound, kDark},   {close, kCurtain}, {sound, kDark},
        {close, kCurtain}, {open, kCurtain},
    };
    int number = 0;
    for (const auto& [act, seen] : steps) {
        SCOPED_TRACE(++number);
        act();
        Settle();
        EXPECT_EQ(Seen(), seen);
    }
}

TEST_F(PlayerTest, ThePaletteAsksForNoPicturesAndItsEngineIsLeftAloneOnceItHasGone) {
    Do([] {
        Instance<MusicShow>()->Show();
        Get<MoviePlayer, MusicShow>("QTM")->SetVisible(true);
    });
    Settle();
    PictureEngine& engine = m_media.Player("MusicForm.QTM");
    EXPECT_TRUE(engine.AskedSize().isEmpty()) << "it stands below the window's edge";
    EXPECT_TRUE(engine.Watched());
    Do([] { Instance<MusicShow>()->Close(); });
    engine.MakePicture(kFirst); // comes to the widget, which is the last to go
    Settle();
}

class FineScreenTest : public PlayerTest {
protected:
    FineScreenTest() : PlayerTest({{"Fine", {0, 0, 1440, 900}, 2.0}}) {}
};

TEST_F(FineScreenTest, PicturesAreOfDevicePixelsAndPlacesStayInUnits) {
    EXPECT_EQ(m_windows->Screens().front(), (Rect{0, 0, 1440, 900}));
    Open();
    Engine().MakePicture(kFirst);
    Settle();
    EXPECT_EQ(Engine().AskedSize(), QSize(640, 480));
    EXPECT_EQ(Find("Mainform", "QTM")->size(), QSize(320, 240)) << "the rectangle less its hidden strip";
    const QImage look = Look("Mainform", "QTM");
    EXPECT_EQ(look.pixelColor(639, 479), kFirst);
    EXPECT_EQ(look.pixelColor(0, 0), kFirst);

    ShowForm<AboutShow>();
    const QImage logo = QImage(":/pictures/Kirologo@2x.png").convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(logo.size(), QSize(320, 240));
    EXPECT_EQ(Look("VerForm", "Canvas1").convertToFormat(QImage::Format_RGB32), logo);
}

} // namespace

} // namespace kirolane::tests
