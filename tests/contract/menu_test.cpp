#include "contract/menubar.h"

#include "contract/applemenuitem.h"
#include "contract/prefsmenuitem.h"
#include "contract/quitmenuitem.h"
#include "support/console_test.h"

namespace kirolane::tests {

static MenuBar MakeBar() {
    MenuBar bar;
    auto controller = std::make_shared<MenuItem>("Controller", "Controller");
    controller->Append(std::make_shared<MenuItem>("Open", "Open", "return"));
    controller->Append(std::make_shared<MenuItem>("Stop", "Stop", "Cmd+b"));
    controller->Append(std::make_shared<AppleMenuItem>("About", "About"));
    controller->Append(std::make_shared<PrefsMenuItem>("Prefs", "Prefs"));
    controller->Append(std::make_shared<QuitMenuItem>("Quit", "Quit", "Cmd+q"));
    bar.Append(controller);
    bar.Item("Stop")->SetRepeats(true);
    return bar;
}

/// Has the last word on one of its items.
class Enabling : public TestForm {
public:
    Enabling() : TestForm("Enabling", kAudienceDesign) {}
    void Event_EnableMenuItems() override {
        if (MenuBar() != nullptr)
            MenuItem("Open")->SetEnabled(true);
    }
};

class MenuTest : public ConsoleTest {
protected:
    MenuTest() {
        Do([&] {
            const MenuBar bar = MakeBar();
            Form().SetMenuBar(bar);
            Instance<Enabling>()->SetMenuBar(bar);
        });
    }
    bool Enabled(const char* name) { return Form().MenuItem(name)->Enabled(); }
};

TEST_F(MenuTest, AnItemIsEnabledExactlyWhereItHasAHandlerUnlessToldOtherwise) {
    int opened = 0;
    Form().BindMenu("Open", [&] { return ++opened > 0; });
    for (const char* item : {"Open", "Stop", "Nothing"})
        Form().ReportMenuChosen(item);
    EXPECT_EQ(opened, 1) << "enabling is brought up to date first";
    EXPECT_TRUE(Enabled("Controller"));
    EXPECT_TRUE(Enabled("Open"));
    EXPECT_FALSE(Enabled("Stop"));
    EXPECT_FALSE(Enabled("About"));
    EXPECT_TRUE(Enabled("Quit")) << "the runtime's own quit needs none";
    Do([this] { Form().MenuItem("Open")->SetAutoEnable(false); });
    Form().ReportActivated();
    EXPECT_FALSE(Enabled("Open"));
    Form().ReportMenuChosen("Open");
    EXPECT_EQ(opened, 1);
    Instance<Enabling>()->UpdateMenuEnabling();
    EXPECT_TRUE(Instance<Enabling>()->MenuItem("Open")->Enabled()) << "the form has the last word";
}

TEST_F(MenuTest, EachFormHasItemsOfItsOwn) {
    Form().MenuItem("Open")->SetText("changed");
    EXPECT_EQ(Instance<Enabling>()->MenuItem("Open")->Text(), "Open");
    EXPECT_TRUE(Form().MenuItem("Stop")->Repeats());
    EXPECT_EQ(Form().MenuItem("Quit")->Role(), MenuRole::Quit);
    EXPECT_EQ(Form().MenuItem("About")->Role(), MenuRole::About);
    EXPECT_EQ(Form().MenuItem("Prefs")->Role(), MenuRole::Preferences);
    auto item = Form().MenuItem("Stop");
    Do([this] { Form().SetMenuBar(MakeBar()); });
    item->SetText("of a bar that is gone"); // tells no window
}

TEST_F(MenuTest, TheRuntimeQuitsOnlyWhereTheFormBindsNoHandler) {
    int asked = 0;
    Form().BindMenu("Quit", [&] { return ++asked > 0; });
    Form().ReportMenuChosen("Quit");
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(TheRuntime().Ended());
    Instance<Enabling>()->ReportMenuChosen("Quit");
    EXPECT_TRUE(TheRuntime().Ended());
    EXPECT_EQ(TheRuntime().Run(), 0);
}

} // namespace kirolane::tests
