#include "logic/about/verform.h"
#include "logic_test.h"

namespace kirolane::tests {

class PlacementTest : public LogicTest {
protected:
    static void ExpectSize(const auto& thing, Point size) {
        EXPECT_EQ((Point{thing.Width(), thing.Height()}), size);
    }
};

TEST_F(PlacementTest, TheSettingsPickThePlaceAndEveryOpenTheSizeAnew) {
    const Rect second = {1600, 100, 1920, 1}; // as left, top, width of the player, full screen or not
    const Rect first = {0, 0, 1600, 1};
    const Rect design = {0, 0, 320, 0};
    const auto windowed = [](std::int32_t width) { return Rect{0, 426, width, 0}; };
    const Point asItIs = {123, 45};
    const std::tuple<int, int, const char*, const char*, std::string, Rect, bool, Point> cases[] = {
        {2, 1200, "true", "false", "false", second, true, {1920, 1096}},
        {2, 1200, "true", "true", "true", second, false, {1920, 1096}}, // line 8 hides
        {1, 1025, "true", "false", "false", windowed(640), true, {800, 616}},
        {1, 1024, "true", "true", "true", windowed(640), false, {640, 496}},
        {1, 1023, "true", "", "false", windowed(320), true, {320, 256}},
        {2, 1200, "false", "true", "true", first, false, {1600, 1216}},
        {1, 1199, "false", "true", "false", first, true, {1600, 1215}},
        {1, 1200, "false", "false", "true", design, false, {800, 616}},
        {1, 1200, "false", "false", "false", windowed(800), true, {800, 616}},
        {2, 1199, "false", "false", "x", windowed(640), false, {640, 496}},
        {1, 1200, "false", "", "false", design, true, asItIs},
        {2, 1200, "yes", "true", "false", design, true, asItIs},
        {2, 1200, "", "true", "", design, false, asItIs},
    };
    for (const auto& [screens, height, dual, full, hide, place, visible, opened] : cases) {
        SCOPED_TRACE(std::to_string(screens) + " " + dual + " " + full + " " + hide);
        SetScreens(screens, height);
        StartWithFiles({"a"}, {{2, dual}, {4, full}, {8, hide}});
        const MonitorForm& monitor = Monitor();
        EXPECT_EQ(monitor.Visible(), visible);
        EXPECT_EQ(Console().AltX_Key()->AutoEnable(), hide == "false");
        EXPECT_EQ((Rect{monitor.Left(), monitor.Top(), monitor.QTM()->Width(), monitor.FullScreen() ? 1 : 0}),
                  place);
        EXPECT_EQ(Console().Setting_Data(2), screens == 1 && dual == std::string("true") ? "false" : dual);
        EXPECT_TRUE(SettingsText().starts_with(std::string("// DualDisplayMode\n") + dual)) << "as a wish";
        if (place.top == 426) {
            const Point size = {place.width, place.width * 3 / 4};
            ExpectSize(monitor, size);
            ExpectSize(*monitor.DummyBack(), size);
            ExpectSize(*monitor.QTM(), {size.left, size.top + 16});
            EXPECT_EQ((Point{monitor.DummyQTM()->Left(), monitor.DummyQTM()->Top()}),
                      (Point{size.left / 2 - 80, size.top / 2 - 60}));
        }
        Do([dual = dual] { // as a save in the run does
            Console().Setting_Data.Set(2, dual);
            Monitor().QTM()->SetWidth(123);
            Monitor().QTM()->SetHeight(45);
        });
        Open(0);
        ExpectSize(*Console().QTM(), {320, 256});
        ExpectSize(*monitor.QTM(), opened);
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
        const auto& logo = *Monitor().DummyQTM(); // by the console's width of 160, not its own of 157
        EXPECT_EQ((Point{logo.Left(), logo.Top()}), (Point{stage.width / 2 - 80, stage.height / 2 - 60}));
        ExpectSize(*Monitor().QTM(), {stage.width, stage.height + 16});
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

} // namespace kirolane::tests
