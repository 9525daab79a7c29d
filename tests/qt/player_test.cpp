// What the audience sees: pictures, the curtain, and the change from one to the other.

#include "player_test.h"

namespace kirolane::tests {

namespace {

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
