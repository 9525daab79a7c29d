#include "contract/menubar.h"

#include "contract/applemenuitem.h"
#include "contract/prefsmenuitem.h"
#include "contract/quitmenuitem.h"
#include "support/contract_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

MenuBar MakeBar() {
    MenuBar bar;
    auto controller = std::make_shared<MenuItem>("Controller", "Controller");
    controller->Append(std::make_shared<MenuItem>("Open", "Open", "return"));
    controller->Append(std::make_shared<MenuItem>("Stop", "Stop", "Cmd+b"));
    controller->Append(std::make_shared<MenuItem>("Line", "-"));
    controller->Append(std::make_shared<AppleMenuItem>("About", "About"));
    controller->Append(std::make_shared<PrefsMenuItem>("Prefs", "Prefs"));
    controller->Append(std::make_shared<QuitMenuItem>("Quit", "Quit", "Cmd+q"));
    bar.Append(controller);
    return bar;
}

class MenuTest : public tests::ContractTest {
protected:
    MenuTest() : m_form(StartWith<tests::ConsoleForm>()) {
        Do([&] { m_form->SetMenuBar(MakeBar()); });
    }
    tests::ConsoleForm& Form() { return *m_form; }
    [[nodiscard]] bool Enabled(const char* name) const { return m_form->MenuItem(name)->Enabled(); }

private:
    Ref<tests::ConsoleForm> m_form;
};

TEST_F(MenuTest, AnItemIsEnabledExactlyWhereItHasAHandlerUnlessToldOtherwise) {
    Form().BindMenu("Open", [] { return true; });
    Form().UpdateMenuEnabling();
    EXPECT_TRUE(Enabled("Controller"));
    EXPECT_TRUE(Enabled("Open"));
    EXPECT_FALSE(Enabled("Stop"));
    EXPECT_FALSE(Enabled("About"));
    EXPECT_TRUE(Enabled("Quit")) << "the runtime's own quit needs none";
    Do([this] { Form().MenuItem("Open")->SetAutoEnable(false); });
    Form().ReportActivated();
    EXPECT_FALSE(Enabled("Open"));
}

TEST_F(MenuTest, EachFormHasItemsOfItsOwn) {
    Do([this] {
        Instance<tests::AudienceForm>()->SetMenuBar(MakeBar());
        Form().MenuItem("Open")->SetText("changed");
        EXPECT_EQ(Instance<tests::AudienceForm>()->MenuItem("Open")->Text(), "Open");
        EXPECT_TRUE(Form().MenuItem("Nothing").IsNil());
        EXPECT_EQ(Form().MenuItem("Quit")->Role(), MenuRole::Quit);
        EXPECT_EQ(Form().MenuItem("About")->Role(), MenuRole::About);
        EXPECT_EQ(Form().MenuItem("Prefs")->Role(), MenuRole::Preferences);
        EXPECT_TRUE(Form().MenuItem("Line")->IsSeparator());
    });
    auto item = Form().MenuItem("Stop");
    Do([this] { Form().SetMenuBar(MakeBar()); });
    item->SetText("of a bar that is gone"); // tells no window
}

TEST_F(MenuTest, AChoiceRunsTheHandlerOfAnEnabledItem) {
    int opened = 0;
    Form().BindMenu("Open", [&] { return ++opened > 0; });
    Form().ReportMenuChosen("Open");
    EXPECT_EQ(opened, 1) << "enabling is brought up to date first";
    Form().MenuItem("Open")->SetAutoEnable(false);
    Form().ReportMenuChosen("Open");
    Form().ReportMenuChosen("Stop");
    Form().ReportMenuChosen("Nothing");
    EXPECT_EQ(opened, 1);
    EXPECT_FALSE(TheRuntime().Ended());
}

TEST_F(MenuTest, EnableMenuItemsHasTheLastWord) {
    class Enabling : public tests::TestForm {
    public:
        Enabling() : TestForm("Enabling", tests::kAudienceDesign) {}
        void Event_EnableMenuItems() override {
            if (MenuBar() != nullptr)
                MenuItem("Open")->SetEnabled(true);
        }
    };
    Do([] { Instance<Enabling>()->SetMenuBar(MakeBar()); });
    const auto form = Instance<Enabling>();
    form->UpdateMenuEnabling();
    EXPECT_TRUE(form->MenuItem("Open")->Enabled());
    EXPECT_FALSE(form->MenuItem("Stop")->Enabled());
}

TEST_F(MenuTest, TheRuntimeQuitsOnlyWhereTheFormBindsNoHandler) {
    int asked = 0;
    Form().BindMenu("Quit", [&] {
        ++asked;
        return true;
    });
    Form().ReportMenuChosen("Quit");
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(TheRuntime().Ended());

    Do([] { Instance<tests::AudienceForm>()->SetMenuBar(MakeBar()); });
    Instance<tests::AudienceForm>()->ReportMenuChosen("Quit");
    EXPECT_TRUE(TheRuntime().Ended());
    EXPECT_EQ(TheRuntime().Run(), 0);
}

} // namespace
} // namespace kirolane
