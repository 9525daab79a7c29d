#pragma once

#include "contract/canvas.h"
#include "contract/movieplayer.h"
#include "contract/rectangle.h"
#include "qt_test.h"

namespace kirolane::tests {

inline const QColor kFirst(200, 30, 40);
inline const QColor kSecond(20, 160, 60);
inline const QColor kDark(Qt::black);
inline const QColor kCurtain; ///< it is up

/// The console with a movie open, as the program opens and closes it.
class PlayerTest : public QtTest {
protected:
    using QtTest::QtTest;
    void SetUp() override {
        QtTest::SetUp();
        LayCurtain();
    }
    void LayCurtain() {
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

} // namespace kirolane::tests
