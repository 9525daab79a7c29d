// The audience's window on its display, and displays that come and go.

#include "backends/qt/convert.h"
#include "backends/qt/keyboardkeeper.h"
#include "contract/screen.h"
#include "qt_test.h"

#include <algorithm>

namespace kirolane::tests {

namespace {

class FullScreenTest : public QtTest {
protected:
    Ref<MonitorShow> CoverStage() {
        Do([&] {
            auto monitor = Instance<MonitorShow>();
            monitor->SetTop(kStage.top);
            monitor->SetLeft(kStage.left);
            monitor->SetFullScreen(true);
            monitor->Show();
            m_console->Show();
        });
        Settle();
        return Instance<MonitorShow>();
    }
    static bool Covers(const Rect& screen) {
        const QWidget* monitor = Find("MonitorForm");
        return monitor->isVisible() && monitor->isFullScreen() && monitor->geometry() == qt::ToQt(screen) &&
               monitor->screen()->geometry() == qt::ToQt(screen);
    }
    /// That this is the area to fill, since the log was last taken.
    static bool Tells(MonitorShow& monitor, const Rect& area) {
        const auto log = monitor.TakeLog();
        const auto told = QString("ScreenChanged %1x%2").arg(area.width).arg(area.height);
        return std::find(log.begin(), log.end(), told.toStdString()) != log.end();
    }
    static bool Seen(const char* window) { return Find(window)->isVisible(); }
    static bool Holds(const QScreen& screen, const Window& window) {
        return screen.geometry().contains(window.Left() + window.Width() / 2,
                                          window.Top() + window.Height() / 2);
    }
};

TEST_F(FullScreenTest, WhateverBecomesOfItsDisplayIsCoveredAnewAndTheKeyboardStays) {
    const Rect left{-1024, 0, 1024, 768};
    const std::pair<int, std::vector<TestScreen>> steps[] = {
        // The number of the one that it covers, -1 where its own has gone.
        {1, {{"Main", kMain}, {"Stage", {1920, 0, 1280, 720}}}},                  // another mode
        {1, {{"Main", {1280, 0, 1920, 1200}}, {"Stage", {0, 40, 1280, 720}}}},    // at the operator's left
        {1, {{"Main", {0, 1080, 1920, 1200}}, {"Other", {-200, 0, 1920, 1080}}}}, // another connector, above
        {1, {{"Main", kMain}, {"Last", {1920, -480, 1080, 1920}, 2.0}}},          // on end, another scale
        {1, {{"Main", kMain}, {"Last", kStage}, {"Left", left}}}, // it comes before one at its left,
        {-1, {{"Main", kMain}, {"Left", left}}},                  // which is no successor
        {2, {{"Main", kMain}, {"Left", left}, {"New", kStage}}},
    };
    auto monitor = CoverStage();
    for (bool hidden : {false, true}) {
        if (hidden)
            Do([&] { m_console->Hide(); });
        for (const auto& [number, screens] : steps) {
            SCOPED_TRACE(screens.back().name + (hidden ? " hidden" : ""));
            ASSERT_TRUE(Until([&] { return hidden ? monitor->Active() : m_console->Active(); }));
            monitor->TakeLog();
            SetScreens(screens);
            hidden = hidden && number >= 0;
            if (number < 0) {
                EXPECT_TRUE(Until([] { return !Seen("MonitorForm") && Seen("Mainform"); }));
                Do([&] { // the logic goes on placing and showing what it holds
                    monitor->SetLeft(6);
                    monitor->Hide();
                    m_console->Hide();
                });
                Do([&] { monitor->Show(); });
                Settle();
                EXPECT_TRUE(!Seen("MonitorForm") && Seen("Mainform") && m_console->Visible());
                continue;
            }
            const Rect covered = screens[static_cast<std::size_t>(number)].rect;
            EXPECT_TRUE(Until([&] { return Covers(covered); }));
            EXPECT_TRUE(Until([&] { return hidden ? monitor->Active() : m_console->Active(); }));
            EXPECT_TRUE(Tells(*monitor, covered));
            EXPECT_EQ(m_windows->Screens()[1], covered);
            EXPECT_TRUE(Until([&] { // the operator's windows stand apart
                return Holds(*QGuiApplication::primaryScreen(), *m_console);
            }));
        }
    }
    SetScreens({{"New", kStage}}); // the main one goes
    EXPECT_TRUE(Until([&] { return m_windows->Screens().size() == 1 && Covers(kStage); }));
}

TEST_F(FullScreenTest, TheKeyboardIsGivenBackUnlessAPersonHasPressedSomethingMeanwhile) {
    auto monitor = CoverStage();
    for (const bool pressed : {false, true}) {
        qt::KeyboardKeeper keeper;
        Do([&] { m_console->Show(); });
        ASSERT_TRUE(Until([&] { return m_console->Active(); }));
        keeper.Begin();
        Find("MonitorForm")->activateWindow();
        ASSERT_TRUE(Until([&] { return monitor->Active(); }));
        if (pressed)
            Press(Qt::Key_Space); // which a command takes
        keeper.GiveBack();
        Settle();
        EXPECT_EQ(monitor->Active(), pressed);
    }
}

TEST_F(FullScreenTest, AWindowManagerThatInsistsOnAnotherPlaceHasItUntilItGivesIn) {
    auto monitor = CoverStage();
    for (const Rect& place : {Rect{1920, 0, 1280, 720}, kStage})
        EXPECT_TRUE(Until([&] {
            Find("MonitorForm")->setGeometry(qt::ToQt(place));
            return Tells(*monitor, place);
        })) << place.width;
}

TEST_F(FullScreenTest, ScreensAreTheMainOneAndThenFromLeftToRight) {
    const Rect far{3840, 0, 1280, 720};
    SetScreens({{"Main", kMain},
                {"Far", far},
                {"Near", {1920, 100, 1920, 1080}},
                {"Mirror of main", kMain},
                {"Mirror of far", far}});
    Settle();
    std::vector<int> lefts;
    for (int index = 0; index < ScreenCount(); ++index)
        lefts.push_back(Screen(index).Left());
    EXPECT_EQ(lefts, (std::vector<int>{0, 1920, 3840})) << "mirrors count as one";
}

} // namespace

} // namespace kirolane::tests
