// Forms, the windows they are, and who has the keyboard.

#include "contract/window.h"

#include "contract/application.h"
#include "contract/rectcontrol.h"
#include "contract/timer.h"
#include "support/captured_stderr.h"
#include "support/contract_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

using tests::AudienceForm;
using tests::ConsoleForm;
using tests::PaletteForm;
using tests::ToolForm;
using Names = std::vector<std::string>;

class WindowTest : public tests::ContractTest {
protected:
    WindowTest() {
        Windows().UseDesktop();
        m_console = StartWith<ConsoleForm>();
        Do([] {
            Instance<AudienceForm>();
            Instance<PaletteForm>();
            Instance<ToolForm>();
        });
        Do([this] { m_console->Show(); });
        Settle();
        Windows().TakeRaised();
        m_console->TakeLog();
    }
    ConsoleForm& Console() { return *m_console; }

private:
    Ref<ConsoleForm> m_console;
};

TEST_F(WindowTest, NamingAFormMakesItOnceAndAfterACloseAnew) {
    const auto first = Instance<AudienceForm>();
    EXPECT_EQ(first, Instance<AudienceForm>());
    EXPECT_EQ(first->TakeLog(), Names{"Open"});
    Do([] { Instance<AudienceForm>()->Close(); });
    EXPECT_EQ(first->TakeLog(), Names{"Close"});
    EXPECT_FALSE(Windows().RecordOf("Audience").visible);
    Do([&] {
        EXPECT_FALSE(first == Instance<AudienceForm>());
        EXPECT_TRUE(Instance<AudienceForm>()->Visible());
    });
    EXPECT_TRUE(Windows().RecordOf("Audience").visible);
    Do([&] { first->Show(); });
    EXPECT_FALSE(first->Visible()) << "what is closed stays closed";
}

TEST_F(WindowTest, AWindowComesToTheScreenAtItsFirstShowing) {
    EXPECT_EQ(Windows().RecordOf("Tool").updates, 0) << "hidden by its design";
    Do([] {
        Instance<ToolForm>()->Show();
        Instance<ToolForm>()->Hide();
    });
    EXPECT_EQ(Windows().RecordOf("Tool").updates, 0) << "shown and hidden in one handler";
    Do([] { Instance<ToolForm>()->Show(); });
    EXPECT_TRUE(Windows().RecordOf("Tool").visible);
}

TEST_F(WindowTest, ChangesOfOneHandlerAreShownOnceAtItsEnd) {
    const auto before = Windows().RecordOf("Console");
    Do([&] {
        auto& box = *Console().Control<RectControl>("Box");
        for (int i = 0; i < 10; ++i) {
            box.SetLeft(i);
            Console().SetTitle(std::to_string(i));
            Console().Hide();
            Console().Show();
        }
        EXPECT_EQ(Windows().RecordOf("Console").updates, before.updates);
    });
    const auto& after = Windows().RecordOf("Console");
    EXPECT_EQ(after.updates, before.updates + 1);
    EXPECT_EQ(after.lastControls, Names{"Box"});
    EXPECT_TRUE(after.visible);
    Do([this] { Console().Control<RectControl>("Push")->Refresh(true); });
    EXPECT_EQ(Windows().RecordOf("Console").windowUpdates, before.windowUpdates + 1);
}

TEST_F(WindowTest, ShowRaisesAWindowThatIsUpAndAPaletteWithoutTheKeyboard) {
    Do([] {
        Instance<AudienceForm>()->Show();
        Instance<PaletteForm>()->Show();
    });
    EXPECT_EQ(Windows().TakeRaised(), (Names{"Audience", "Palette (no keyboard)"}));
    EXPECT_EQ(Windows().ActiveWindow(), "Audience");
    Do([] { Instance<AudienceForm>()->Show(); });
    EXPECT_EQ(Windows().TakeRaised(), Names{"Audience"});
    Do([this] { Console().Control<RectControl>("Grid")->SetFocus(); });
    EXPECT_TRUE(Windows().TakeRaised().empty()) << "focus neither raises nor activates";
    EXPECT_EQ(Console().FocusControl()->Name(), "Grid");
}

TEST_F(WindowTest, AnActiveWindowThatGoesHandsTheKeyboardToTheConsoleThenToTheMonitor) {
    Do([] { Instance<ToolForm>()->Show(); });
    Settle();
    Windows().TakeRaised();
    Do([] { Instance<ToolForm>()->Hide(); });
    Settle();
    EXPECT_EQ(Windows().TakeRaised(), Names{"Console"});
    EXPECT_EQ(Windows().ActiveWindow(), "Console");
    EXPECT_TRUE(Console().Active());
    Do([this] { Console().Hide(); });
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Audience");
    EXPECT_FALSE(Console().Active());
    Do([] { Instance<AudienceForm>()->Hide(); }); // the last one that can be seen
    Settle();
    EXPECT_TRUE(Console().Visible());
    EXPECT_EQ(Windows().ActiveWindow(), "Console");
}

TEST_F(WindowTest, APaletteNeitherTakesTheKeyboardNorCountsAsTheLastWindow) {
    Do([this] {
        Instance<PaletteForm>()->Show();
        Console().Hide();
    });
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Audience");
    Do([] { Instance<AudienceForm>()->Hide(); });
    Settle();
    EXPECT_TRUE(Console().Visible());
}

TEST_F(WindowTest, TheKeyboardIsNotTakenTwiceForOneWindowThatWent) {
    Do([this] { // the operator's choice stands
        Console().Hide();
        Instance<ToolForm>()->Show();
    });
    EXPECT_FALSE(Console().Active()) << "also where the desktop says nothing";
    Settle();
    EXPECT_EQ(Windows().ActiveWindow(), "Tool");
    Windows().TakeRaised();
    Do([this] { Console().SetTitle("later"); });
    Settle();
    EXPECT_TRUE(Windows().TakeRaised().empty());
}

TEST_F(WindowTest, NothingReachesAClosedWindow) {
    const auto console = Instance<ConsoleForm>();
    int ticks = 0;
    console->Control<Timer>("Clock")->OnAction = [&] { ++ticks; };
    Do([&] {
        console->Close();
        console->ReportRestored();
    });
    console->ReportActivated();
    Advance(1500);
    Settle();
    EXPECT_EQ(console->TakeLog(), Names{"Close"});
    EXPECT_EQ(ticks, 0);
}

TEST_F(WindowTest, AReportPutOffMayFindItsWindowGone) {
    Do([] {
        Instance<AudienceForm>()->ReportRestored(); // waits for the handler
        Instance<AudienceForm>()->Close();
    });
    Settle(); // with the sanitizers on, a use of the window would show
    Do([] { EXPECT_EQ(Instance<AudienceForm>()->TakeLog(), Names{"Open"}); });
}

TEST_F(WindowTest, ACloseEventThatFailsLeavesTheWindowThere) {
    class Stubborn : public tests::TestForm {
    public:
        Stubborn() : TestForm("Stubborn", tests::kAudienceDesign) {}
        void Event_Close() override { (void)*Ref<int>(); }
    };
    tests::CapturedStderr captured;
    Do([] { Instance<Stubborn>(); });
    Instance<Stubborn>()->ReportCloseRequested();
    EXPECT_TRUE(Instance<Stubborn>()->Visible());
    EXPECT_EQ(captured.Lines(), Names{"kirolane: Stubborn Close: NilObjectException"});
}

TEST_F(WindowTest, QuitEndsTheLoopWithTheFirstStatusAndNoEventFollows) {
    int ticks = 0;
    Console().Control<Timer>("Clock")->OnAction = [&] {
        if (++ticks == 3) {
            Quit(7);
            Quit(0);
        }
    };
    EXPECT_EQ(TheRuntime().Run(), 7);
    EXPECT_EQ(ticks, 3);
    Console().ReportRestored();
    Advance(5000);
    EXPECT_EQ(ticks, 3);
    EXPECT_TRUE(Console().TakeLog().empty());
}

TEST_F(WindowTest, AStartThatFailsSaysWhyAndNamesTheFile) {
    Restart();
    tests::CapturedStderr captured;
    std::string failure;
    EXPECT_FALSE(TheRuntime().Start(
        [] {
            Runtime::Current().Failures().NoteFile("/home/x/ES", "Permission denied");
            (void)*Ref<int>();
        },
        failure));
    EXPECT_EQ(failure, "start: NilObjectException (/home/x/ES: Permission denied)");
    EXPECT_EQ(captured.Lines(), Names{"kirolane: " + failure});
}

} // namespace
} // namespace kirolane
