// What the audience sees: pictures, the curtain, and the change from one to the other.

#include "contract/canvas.h"
#include "contract/movieplayer.h"
#include "contract/rectangle.h"
#include "qt_test.h"
#include "show_forms.h"

namespace kirolane::tests {

namespace {

const QColor kFirst(200, 30, 40);
const QColor kSecond(20, 160, 60);

class PlayerTest : public QtTest {
protected:
    void Start() {
        StartWith<ConsoleShow>();
        Do([] {
            auto console = Instance<ConsoleShow>();
            console->Control<Rectangle>("DummyBack")->SetLeft(11);
            console->Control<Rectangle>("DummyBack")->SetTop(28);
            console->Control<Canvas>("DummyQTM")->SetLeft(91);
            console->Control<Canvas>("DummyQTM")->SetTop(88);
        });
    }
    PictureEngine& Engine() { return Media().Player("Mainform.QTM"); }
    static Ref<MoviePlayer> Player() { return Instance<ConsoleShow>()->Control<MoviePlayer>("QTM"); }

    /// As an open does it: whatever is on is closed, and the next is shown in its place, in one handler.
    void Open(bool withPicture = true) {
        Engine().SetNextHasPicture(withPicture);
        Do([] {
            auto console = Instance<ConsoleShow>();
            ShowCurtain(true);
            Player()->SetMovie(nullptr);
            Player()->SetMovie(Ref<Movie>(std::make_shared<Movie>("clip.mov")));
            Player()->SetWidth(320);
            Player()->SetHeight(256);
            ShowCurtain(false);
        });
    }
    void Close() {
        Do([] {
            Player()->SetMovie(nullptr);
            ShowCurtain(true);
        });
    }
    static void ShowCurtain(bool shown) {
        auto console = Instance<ConsoleShow>();
        Player()->SetVisible(!shown);
        console->Control<Rectangle>("DummyBack")->SetVisible(shown);
        console->Control<Canvas>("DummyQTM")->SetVisible(shown);
    }
    static bool CurtainUp() { return Find("Mainform", "DummyBack")->isVisible(); }
    static QColor Seen() { return Look("Mainform", "QTM").pixelColor(160, 120); }
};

TEST_F(PlayerTest, TheCurtainStaysUntilTheFirstPictureIsThere) {
    Start();
    Open();
    Settle();
    EXPECT_TRUE(CurtainUp());
    EXPECT_FALSE(Find("Mainform", "QTM")->isVisible());
    Engine().MakePicture(kFirst);
    ASSERT_TRUE(Until([] { return Find("Mainform", "QTM")->isVisible(); }));
    EXPECT_FALSE(CurtainUp());
    EXPECT_FALSE(Find("Mainform", "DummyQTM")->isVisible());
    EXPECT_EQ(Seen(), kFirst);

    Close();
    EXPECT_TRUE(CurtainUp());
    EXPECT_FALSE(Find("Mainform", "QTM")->isVisible());
}

TEST_F(PlayerTest, FromOneMovieToTheNextTheLastPictureStays) {
    Start();
    Open();
    Engine().MakePicture(kFirst);
    Settle();
    Open();
    Settle();
    EXPECT_FALSE(CurtainUp());
    EXPECT_EQ(Seen(), kFirst);
    Engine().MakePicture(kSecond);
    Settle();
    EXPECT_EQ(Seen(), kSecond);
}

TEST_F(PlayerTest, SoundAloneIsBlackAndAtOnce) {
    Start();
    Open();
    Engine().MakePicture(kFirst);
    Settle();
    Open(false);
    Settle();
    EXPECT_FALSE(CurtainUp());
    EXPECT_EQ(Seen(), QColor(Qt::black));
    Close();
    Open(false);
    Settle();
    EXPECT_FALSE(CurtainUp());
}

TEST_F(PlayerTest, APictureThatDoesNotComeIsWaitedForOneSecond) {
    Start();
    Open();
    EXPECT_TRUE(Until([] { return !CurtainUp(); }));
    EXPECT_EQ(Seen(), QColor(Qt::black));
}

TEST_F(PlayerTest, ARunOfPicturesNeverFillsTheLoop) {
    Start();
    Open();
    for (int i = 0; i < 10000; ++i)
        Engine().MakePicture(i % 2 == 0 ? kSecond : kFirst);
    Settle();
    EXPECT_EQ(Seen(), kFirst);
}

TEST_F(PlayerTest, ThePaletteHidesItsPlayerBelowItsEdgeAndAsksForNoPictures) {
    Start();
    Do([] {
        Instance<MusicShow>()->Show();
        Instance<MusicShow>()->Control<MoviePlayer>("QTM")->SetVisible(true);
    });
    Settle();
    EXPECT_EQ(Media().Player("MusicForm.QTM").Width(), 0);
}

class FinePlayerTest : public QtTest {
protected:
    FinePlayerTest() : QtTest({{"Fine", {0, 0, 1440, 900}, 2.0}}) {}
};

TEST_F(FinePlayerTest, PicturesAreAskedForInDevicePixelsAndPlacesStayInUnits) {
    StartWith<ConsoleShow>();
    EXPECT_EQ(Windows().Screens().front(), (Rect{0, 0, 1440, 900}));
    Do([] {
        auto player = Instance<ConsoleShow>()->Control<MoviePlayer>("QTM");
        player->SetMovie(Ref<Movie>(std::make_shared<Movie>("clip.mov")));
        player->SetHeight(256);
        player->SetVisible(true);
        Instance<ConsoleShow>()->Control<Rectangle>("DummyBack")->SetVisible(false);
    });
    auto& engine = Media().Player("Mainform.QTM");
    EXPECT_EQ(QSize(engine.Width(), engine.Height()), QSize(640, 480));
    EXPECT_EQ(Find("Mainform", "QTM")->size(), QSize(320, 240)) << "the rectangle less its hidden strip";
    engine.MakePicture(kFirst);
    Settle();
    const QImage look = Look("Mainform", "QTM");
    EXPECT_EQ(look.size(), QSize(640, 480));
    EXPECT_EQ(look.pixelColor(639, 479), kFirst);
    EXPECT_EQ(look.pixelColor(0, 0), kFirst);
}

TEST_F(PlayerTest, AnEngineIsLeftAloneOnceItsWindowHasGone) {
    Start();
    Do([] { Instance<MusicShow>()->Show(); });
    EXPECT_TRUE(Media().Player("MusicForm.QTM").Watched());
    Do([] { Instance<MusicShow>()->Close(); }); // the engine itself looks whether it is still listened to
    Media().Player("MusicForm.QTM").MakePicture(kFirst); // comes to the widget, which is the last to go
    Settle();
}

} // namespace

} // namespace kirolane::tests
