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
    enum class Place { Second, First, Windowed, Design };
    const struct {
        int screens;
        const char* dual;
        const char* full;
        const char* hide;
        Place place;
        bool visible;
    } cases[] = {
        {2, "true", "false", "false", Place::Second, true},
        {2, "true", "true", "true", Place::Second, false}, // dual display wins, then line 8 hides
        {2, "TRUE", "", "false", Place::Second, true},
        {1, "true", "false", "false", Place::Windowed, true},
        {1, "true", "true", "true", Place::Windowed, false},
        {2, "false", "true", "true", Place::First, false},
        {1, "false", "true", "false", Place::First, true},
        {1, "false", "false", "true", Place::Design, false},
        {1, "false", "false", "false", Place::Windowed, true},
        {2, "false", "false", "x", Place::Windowed, false},
        {1, "false", "", "false", Place::Design, true},
        {2, "yes", "true", "false", Place::Design, true},
        {2, "", "true", "", Place::Design, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.screens) + " " + c.dual + " " + c.full + " " + c.hide);
        SetScreens(c.screens, 1199);
        WriteSettings({{2, c.dual}, {4, c.full}, {8, c.hide}});
        Start();
        const MonitorForm& monitor = Monitor();
        EXPECT_EQ(monitor.Visible(), c.visible);
        EXPECT_EQ(Console().AltX_Key()->AutoEnable(), c.visible || std::string(c.hide) == "false");
        EXPECT_EQ(monitor.FullScreen(), c.place == Place::Second || c.place == Place::First);
        EXPECT_EQ(monitor.Left(), c.place == Place::Second ? 1600 : 0);
        EXPECT_EQ(monitor.Top(), c.place == Place::Second ? 100 : c.place == Place::Windowed ? 426 : 0);
        const std::int32_t width = c.place == Place::Second   ? 1920
                                   : c.place == Place::First  ? 1600
                                   : c.place == Place::Design ? 320
                                                              : 640;
        EXPECT_EQ(monitor.QTM()->Width(), width);
        EXPECT_EQ(Console().Setting_Data(2),
                  c.screens == 1 && std::string(c.dual) == "true" ? "false" : c.dual);
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
    const struct {
        int height;
        std::int32_t width;
        std::int32_t windowHeight;
    } cases[] = {{1023, 320, 240}, {1024, 640, 480}, {1199, 640, 480}, {1200, 800, 600}};
    for (const auto& [height, width, windowHeight] : cases) {
        SCOPED_TRACE(height);
        SetScreens(1, height);
        Start();
        ExpectSize(&Monitor(), width, windowHeight);
        ExpectSize(Monitor().DummyBack(), width, windowHeight);
        EXPECT_EQ(Monitor().DummyQTM()->Left(), width / 2 - 80);
        EXPECT_EQ(Monitor().DummyQTM()->Top(), windowHeight / 2 - 60);
        ExpectSize(Monitor().QTM(), width, windowHeight + 16);
        EXPECT_EQ(SettingsText().substr(0, 24), "// DualDisplayMode\ntrue\n") << "the wish stays in the file";
        End();
    }
}

TEST_F(PlacementTest, EveryOpenSizesThePlayersAnew) {
    const struct {
        const char* dual;
        const char* full;
        int screens;
        int height;
        std::int32_t width;
        std::int32_t playerHeight;
    } cases[] = {
        {"true", "false", 2, 1200, 1920, 1096}, {"true", "true", 1, 1025, 800, 616},
        {"true", "", 1, 1024, 640, 496},        {"true", "false", 1, 1023, 320, 256},
        {"false", "true", 2, 1200, 1600, 1216}, {"false", "false", 1, 1200, 800, 616},
        {"false", "false", 1, 1199, 640, 496},  {"false", "false", 1, 1024, 640, 496},
        {"false", "false", 2, 1023, 320, 256},  {"false", "x", 1, 1200, 123, 45},
        {"", "true", 2, 1200, 123, 45},
    };
    StartWithMedia({"a.mov"});
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.dual) + " " + c.full + " " + std::to_string(c.height));
        SetScreens(c.screens, c.height);
        Do([&] {
            Console().Setting_Data.Set(2, c.dual); // as a save in the run does
            Console().Setting_Data.Set(4, c.full);
            Monitor().QTM()->SetWidth(123);
            Monitor().QTM()->SetHeight(45);
        });
        Open(0);
        ExpectSize(Console().QTM(), 320, 256);
        ExpectSize(Monitor().QTM(), c.width, c.playerHeight);
    }
}

} // namespace kirolane::tests
