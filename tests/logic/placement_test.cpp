#include "logic/about/verform.h"
#include "logic_test.h"

namespace kirolane::tests {

class PlacementTest : public LogicTest {
protected:
    static void ExpectSize(const auto& thing, std::int32_t width, std::int32_t height) {
        EXPECT_EQ(thing->Width(), width);
        EXPECT_EQ(thing->Height(), height);
    }
};

TEST_F(PlacementTest, TheSettingsPickOneOfThePlacements) {
    const Rect second = {1600, 100, 1920, 1}; // as left, top, width of the player, full screen or not
    const Rect first = {0, 0, 1600, 1};
    const Rect windowed = {0, 426, 640, 0};
    const Rect design = {0, 0, 320, 0};
    const std::tuple<int, std::string, const char*, std::string, Rect, bool> cases[] = {
        {2, "true", "false", "false", second, true},
        {2, "true", "true", "true", second, false}, // dual display wins, then line 8 hides
        {2, "TRUE", "", "false", second, true},
        {1, "true", "false", "false", windowed, true},
        {1, "true", "true", "true", windowed, false},
        {2, "false", "true", "true", first, false},
        {1, "false", "true", "false", first, true},
        {1, "false", "false", "true", design, false},
        {1, "false", "false", "false", windowed, true},
        {2, "false", "false", "x", windowed, false},
        {1, "false", "", "false", design, true},
        {2, "yes", "true", "false", design, true},
        {2, "", "true", "", design, false},
    };
    for (const auto& [screens, dual, full, hide, place, visible] : cases) {
        SCOPED_TRACE(std::to_string(screens) + " " + dual + " " + full + " " + hide);
        SetScreens(screens, 1199);
        WriteSettings({{2, dual}, {4, full}, {8, hide}});
        Start();
        const MonitorForm& monitor = Monitor();
        EXPECT_EQ(monitor.Visible(), visible);
        EXPECT_EQ(Console().AltX_Key()->AutoEnable(), hide == "false");
        EXPECT_EQ((Rect{monitor.Left(), monitor.Top(), monitor.QTM()->Width(), monitor.FullScreen() ? 1 : 0}),
                  place);
        EXPECT_EQ(Console().Setting_Data(2), screens == 1 && dual == "true" ? "false" : dual);
        End();
    }
}

TEST_F(PlacementTest, TheDisplaysMayStandInAnyOrderAndChange) {
    Windows().UseDesktop();
    const Rect layouts[][2] = {
        {{0, 0, 1600, 1200}, {1600, 100, 1920, 1080}},  // the audience's at the right of the main one
        {{1920, 0, 1600, 1200}, {0, 120, 1920, 1080}},  // at its left
        {{0, 1080, 1600, 900}, {-160, 0, 1920, 1080}},  // above
        {{0, 0, 1366, 767}, {0, 767, 1024, 768}},       // below
        {{1080, 0, 2560, 1440}, {0, -480, 1080, 1920}}, // on end
    };
    const auto place = [](const auto& thing) {
        return Rect{thing.Left(), thing.Top(), thing.Width(), thing.Height()};
    };
    const auto expect = [&](const Rect& main, const Rect& stage) {
        for (const Window* own : std::initializer_list<const Window*>{
                 &Console(), &Sound(), &*Instance<SettingForm>(), &*Instance<VerForm>()})
            EXPECT_TRUE(main.Holds({own->Left() + own->Width() / 2, own->Top() + own->Height() / 2}))
                << own->Name();
        // The curtain has one more, the player the hidden strip.
        EXPECT_EQ(place(*Monitor().DummyBack()), (Rect{0, 0, stage.width + 1, stage.height + 1}));
        const auto& logo = Monitor().DummyQTM(); // by the console's width of 160, not its own of 157
        EXPECT_EQ(logo->Left(), stage.width / 2 - 80);
        EXPECT_EQ(logo->Top(), stage.height / 2 - 60);
        ExpectSize(Monitor().QTM(), stage.width, stage.height + 16);
    };
    for (const auto& [main, stage] : layouts) {
        Windows().SetScreens({main, stage});
        Start();
        EXPECT_EQ((Point{Monitor().Left(), Monitor().Top()}), (Point{stage.left, stage.top}));
        EXPECT_EQ(place(*Instance<SettingForm>()),
                  (Rect{main.left + (main.width - 688) / 2, main.top + (main.height - 400) / 2, 688, 400}));
        EXPECT_EQ(place(*Instance<VerForm>()),
                  (Rect{main.left + (main.width - 245) / 2, main.top + (main.height - 300) / 2, 245, 300}));
        expect(main, stage);
        for (const auto& [newMain, newStage] : layouts) {
            SCOPED_TRACE(std::to_string(main.left) + " to " + std::to_string(newMain.left));
            Windows().SetScreens({newMain, newStage});
            TheRuntime().ReportScreensChanged();
            expect(newMain, newStage);
        }
        End();
    }
}

TEST_F(PlacementTest, TheWindowedMonitorGrowsWithTheScreen) {
    const std::tuple<int, std::int32_t, std::int32_t> cases[] = {
        {1023, 320, 240}, {1024, 640, 480}, {1199, 640, 480}, {1200, 800, 600}};
    for (const auto& [screen, width, height] : cases) {
        SCOPED_TRACE(screen);
        SetScreens(1, screen);
        Start();
        ExpectSize(&Monitor(), width, height);
        ExpectSize(Monitor().DummyBack(), width, height);
        ExpectSize(Monitor().QTM(), width, height + 16);
        EXPECT_EQ(Monitor().DummyQTM()->Left(), width / 2 - 80);
        EXPECT_EQ(Monitor().DummyQTM()->Top(), height / 2 - 60);
        EXPECT_EQ(SettingsText().substr(0, 24), "// DualDisplayMode\ntrue\n") << "the wish stays in the file";
        End();
    }
}

TEST_F(PlacementTest, EveryOpenSizesThePlayersAnew) {
    const std::tuple<const char*, const char*, int, int, std::int32_t, std::int32_t> cases[] = {
        {"true", "false", 2, 1200, 1920, 1096}, {"true", "true", 1, 1025, 800, 616},
        {"true", "", 1, 1024, 640, 496},        {"true", "false", 1, 1023, 320, 256},
        {"false", "true", 2, 1200, 1600, 1216}, {"false", "false", 1, 1200, 800, 616},
        {"false", "false", 1, 1199, 640, 496},  {"false", "false", 1, 1024, 640, 496},
        {"false", "false", 2, 1023, 320, 256},  {"false", "x", 1, 1200, 123, 45},
        {"", "true", 2, 1200, 123, 45}};
    StartWithMedia({"a.mov"});
    for (const auto& [dual, full, screens, screen, width, height] : cases) {
        SCOPED_TRACE(std::string(dual) + full + std::to_string(screen));
        SetScreens(screens, screen);
        Console().Setting_Data.Set(2, dual); // as a save in the run does
        Console().Setting_Data.Set(4, full);
        Do([] {
            Monitor().QTM()->SetWidth(123);
            Monitor().QTM()->SetHeight(45);
        });
        Open(0);
        ExpectSize(Console().QTM(), 320, 256);
        ExpectSize(Monitor().QTM(), width, height);
    }
}

} // namespace kirolane::tests
