#include "contract/window.h"

#include "support/console_test.h"

#include <sstream>

namespace kirolane::tests {

class WindowTest : public ConsoleTest {
protected:
    WindowTest() {
        Do([this] {
            Instance<AudienceForm>();
            Instance<PaletteForm>();
            Instance<ToolForm>();
            Form().Show();
        });
        Settle();
        Windows().TakeRaised();
        Form().TakeLog();
    }
    /// In one handler: "+Tool" shows that window, "-Tool" hides it, "xTool" closes it.
    void Act(const std::string& acts) {
        Do([&] {
            std::istringstream words(acts);
            for (std::string word; words >> word;)
                for (const auto& form : TheRuntime().Forms().All())
                    if (form->Name() == word.substr(1))
                        word[0] == '+' ? form->Show() : word[0] == '-' ? form->Hide() : form->Close();
        });
    }
};

TEST_F(WindowTest, EachHandlerEndsWithTheKeyboardWhereItBelongs) {
    const struct {
        const char* acts;
        Names raised;
        const char* active;
    } steps[] = {
        {"+Tool -Tool", {}, "Console"},
        {"+Audience +Palette", {"Audience", "Palette (no keyboard)"}, "Audience"},
        {"+Audience", {"Audience"}, "Audience"}, // also where it is up
        {"+Console +Console", {"Console"}, "Console"},
        {"-Console +Tool", {"Tool"}, "Tool"},  // the operator's choice stands
        {"", {}, "Tool"},                      // later, too
        {"-Tool", {"Audience"}, "Audience"},   // a palette does not take it
        {"-Audience", {"Console"}, "Console"}, // the last that could be seen
        {"+Tool", {"Tool"}, "Tool"},
        {"xTool", {"Console"}, "Console"},
    };
    for (const auto& [acts, raised, active] : steps) {
        SCOPED_TRACE(acts);
        Act(acts);
        Settle();
        EXPECT_EQ(Windows().TakeRaised(), raised);
        EXPECT_EQ(Windows().ActiveWindow(), active);
        EXPECT_EQ(Form().Active(), active == Form().Name());
    }
}

TEST_F(WindowTest, AWindowComesToTheScreenAtItsFirstShowingAndThatIsToldLater) {
    Act("+Tool -Tool");
    EXPECT_EQ(Windows().RecordOf("Tool").updates, 0);
    Act("+Tool");
    EXPECT_TRUE(Windows().RecordOf("Tool").visible);
    EXPECT_EQ(Instance<ToolForm>()->TakeLog(), Names{"Open"});
    Settle();
    EXPECT_EQ(Instance<ToolForm>()->TakeLog(), Names{"Activate"});
}

TEST_F(WindowTest, AClosedFormStaysClosedAndHearsNothingAndItsNameMakesANewOne) {
    const auto form = Instance<AudienceForm>();
    Do([&] {
        form->ReportRestored(); // put off, it finds its window gone: with the sanitizers on, a use would show
        form->Close();
        form->Show();
        EXPECT_FALSE(form->Visible());
        EXPECT_FALSE(form == Instance<AudienceForm>());
    });
    form->ReportActivated();
    Settle();
    EXPECT_EQ(form->TakeLog(), (Names{"Open", "Close"}));
    EXPECT_EQ(Instance<AudienceForm>()->TakeLog(), Names{"Open"});
    EXPECT_TRUE(Windows().RecordOf("Audience").visible);
}

} // namespace kirolane::tests
