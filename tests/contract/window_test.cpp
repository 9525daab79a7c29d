// Forms, the windows they are, and who has the keyboard.

#include "contract/window.h"

#include "contract/application.h"
#include "contract/rectcontrol.h"
#include "contract/timer.h"
#include "support/captured_stderr.h"
#include "support/console_test.h"

namespace kirolane::tests {

using Names = std::vector<std::string>;

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
    template <class F> void Show() {
        Do([] { Instance<F>()->Show(); });
        Settle();
    }
    template <class F> void Hide() {
        Do([] { Instance<F>()->Hide(); });
        Settle();
    }
    /// Counts the ticks of the console.
    int& Ticks() {
        Get<Timer>("Clock").OnAction = [this] { ++m_ticks; };
        return m_ticks;
    }

private:
    int m_ticks = 0;
};

TEST_F(WindowTest, NamingAFormMakesItOnceAndAfterACloseAnew) {
    auto form = Instance<AudienceForm>();
    EXPECT_EQ(form->TakeLog(), Names{"Open"});
    Do([&] {
        form->ReportRestored(); // put off, it finds its window gone: with the sanitizers on, a use would show
        form->Close();
        EXPECT_EQ(form->TakeLog(), Names{"Close"});
        form->Show();
        EXPECT_FALSE(form->Visible()) << "what is closed stays closed";
        EXPECT_FALSE(form == Instance<AudienceForm>());
        form = Instance<AudienceForm>();
    });
    Settle();
    EXPECT_EQ(form->TakeLog(), Names{"Open"});
    EXPECT_TRUE(Windows().RecordOf("Audience").visible);
}

TEST_F(WindowTest, AWindowComesToTheScreenAtItsFirstShowing) {
    Do([] {
        Instance<ToolForm>()->Show();
        Instance<ToolForm>()->Hide();
    });
    EXPECT_EQ(Windows().RecordOf("Tool").updates, 0) << "hidden by its design, and within one handler";
    Do([] { Instance<ToolForm>()->Show(); });
    EXPECT_TRUE(Windows().RecordOf("Tool").visible);
    EXPECT_EQ(Instance<ToolForm>()->TakeLog(), Names{"Open"}) << "what its coming to the front reports waits";
    Settle();
    EXPECT_EQ(Instance<ToolForm>()->TakeLog(), Names{"Activate"});
}

TEST_F(WindowTest, ChangesOfOneHandlerAreShownOnceAtItsEnd) {
    const auto before = Windows().RecordOf("Console");
    Do([&] {
        for (int i = 0; i < 10; ++i) {
            Get<RectControl>("Bar").SetLeft(i);
            Form().SetTitle(std::to_string(i));
            Form().Hide();
            Form().Show();
        }
        EXPECT_EQ(Windows().RecordOf("Console").updates, before.updates);
    });
    const auto& after = Windows().RecordOf("Console");
    EXPECT_EQ(after.updates, before.updates + 1);
    EXPECT_EQ(after.lastControls, Names{"Bar"});
    EXPECT_TRUE(after.visible);
    EXPECT_EQ(Windows().TakeRaised(), Names{"Console"});
    Do([this] { Get<RectControl>("Push").Refresh(true); });
    EXPECT_EQ(Windows().RecordOf("Console").windowUpdates, before.windowUpdates + 1);
}

TEST_F(WindowTest, ShowRaisesAWindowThatIsUpAndAPaletteWithoutTheKeyboard) {
    Do([] {
        Instance<AudienceForm>()->Show();
        Instance<PaletteForm>()->Show();
    });
    EXPECT_EQ(Windows().TakeRaised(), (Names{"Audience", "Palette (no keyboard)"}));
    EXPECT_EQ(Windows().ActiveWindow(), "Audience");
    Show<AudienceForm>();
    EXPECT_EQ(Windows().TakeRaised(), Names{"Audience"});
    Do([this] { Get<RectControl>("Grid").SetFocus(); });
    EXPECT_TRUE(Windows().TakeRaised().empty()) << "focus neither raises nor activates";
    EXPECT_EQ(Form().FocusControl()->Name(), "Grid");
}

TEST_F(WindowTest, AnActiveWindowThatGoesHandsTheKeyboardToTheConsoleThenToTheMonitor) {
    Show<ToolForm>();
    Windows().TakeRaised();
    Hide<ToolForm>();
    EXPECT_EQ(Windows().TakeRaised(), Names{"Console"});
    EXPECT_EQ(Windows().ActiveWindow(), "Console");
    EXPECT_TRUE(Form().Active());
    Do([this] { // a palette does not take it
        Instance<PaletteForm>()->Show();
        Form().Hide();
    });
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Audience");
    EXPECT_FALSE(Form().Active());
    Hide<AudienceForm>(); // the last one that can be seen: the palette does not count
    EXPECT_TRUE(Form().Visible());
    EXPECT_EQ(Windows().ActiveWindow(), "Console");
    Show<ToolForm>();
    Do([] { Instance<ToolForm>()->Close(); });
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Console");
}

TEST_F(WindowTest, TheKeyboardIsNotTakenTwiceForOneWindowThatWent) {
    Do([this] { // the operator's choice stands
        Form().Hide();
        Instance<ToolForm>()->Show();
    });
    EXPECT_FALSE(Form().Active()) << "also where the desktop says nothing";
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Tool");
    Windows().TakeRaised();
    Do([this] { Form().SetTitle("later"); });
    Settle();
    EXPECT_TRUE(Windows().TakeRaised().empty());
}

TEST_F(WindowTest, NothingReachesAClosedWindow) {
    const int& ticks = Ticks();
    Do([this] {
        Form().Close();
        Form().ReportRestored();
    });
    EXPECT_FALSE(Windows().RecordOf("Console").visible);
    Form().ReportActivated();
    Advance(1500);
    Settle();
    EXPECT_EQ(Form().TakeLog(), Names{"Close"});
    EXPECT_EQ(ticks, 0);
}

TEST_F(WindowTest, ACloseEventThatFailsLeavesTheWindowThere) {
    class Stubborn : public TestForm {
    public:
        Stubborn() : TestForm("Stubborn", kAudienceDesign) {}
        void Event_Close() override { (void)*Ref<int>(); }
    };
    CapturedStderr captured;
    Do([] { Instance<Stubborn>(); });
    Instance<Stubborn>()->ReportCloseRequested();
    EXPECT_TRUE(Instance<Stubborn>()->Visible());
    Instance<Stubborn>()->ReportCloseRequested();
    EXPECT_EQ(captured.Lines(), Names(2, "kirolane: Stubborn Close: NilObjectException"));
}

TEST_F(WindowTest, QuitEndsTheLoopWithTheFirstStatusAndNoEventFollows) {
    const int& ticks = Ticks();
    Windows().At(2500, [this] {
        Do([] {
            Quit(7);
            Quit(0);
        });
    });
    EXPECT_EQ(TheRuntime().Run(), 7);
    Form().ReportRestored();
    Advance(5000);
    EXPECT_EQ(ticks, 2);
    EXPECT_TRUE(Form().TakeLog().empty());
}

TEST_F(WindowTest, AStartThatFailsSaysWhyAndNamesTheFile) {
    Restart();
    CapturedStderr captured;
    std::string failure;
    const auto fail = [] {
        Runtime::Current().Failures().NoteFile("/home/x/ES", "Permission denied");
        (void)*Ref<int>();
    };
    EXPECT_FALSE(TheRuntime().Start(fail, failure));
    EXPECT_EQ(failure, "start: NilObjectException (/home/x/ES: Permission denied)");
    EXPECT_EQ(captured.Lines(), Names{"kirolane: " + failure});
}

} // namespace kirolane::tests
