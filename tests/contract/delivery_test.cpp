// How the outside meets the forms: one handler at a time, its net effect at its end, failures, the chooser.

#include "contract/folderitem.h"
#include "contract/listbox.h"
#include "contract/movieplayer.h"
#include "contract/pushbutton.h"
#include "contract/thread.h"
#include "contract/timer.h"
#include "support/captured_stderr.h"
#include "support/console_test.h"

namespace kirolane::tests {

class DeliveryTest : public ConsoleTest {
protected:
    DeliveryTest() { Media().Script("clip.mov", {.length = 60}); }
    static Ref<Movie> Clip() { return Ref(std::make_shared<Movie>("/clips/clip.mov")); }
    MoviePlayer& A() { return Get<MoviePlayer>("A"); }
    MoviePlayer& B() { return Get<MoviePlayer>("B"); }
    PushButton& Push() { return Get<PushButton>("Push"); }
};

TEST_F(DeliveryTest, RunningPlayersAreReadAsOfOneInstantUntilTheHandlerYieldsOrLoads) {
    Do([&] {
        for (MoviePlayer* player : {&A(), &B()}) {
            player->SetMovie(Clip());
            player->Play();
        }
    });
    const auto passes = [&](double from) {
        EXPECT_EQ(A().Position(), from);
        Clock().Leap(250);
        EXPECT_EQ(B().Position(), from);
    };
    Do([&] {
        passes(0.0);
        YieldToThreads();
        passes(0.25);
        B().SetMovie(Clip());
        EXPECT_EQ(A().Position(), 0.5);
    });
}

TEST_F(DeliveryTest, APlayerIsEmptiedByWhatAHandlerLeavesInIt) {
    const auto unloads = [&](const std::function<void()>& handler) {
        Do(handler);
        return Media().Orders().back().order.unload;
    };
    const auto fill = [&] { A().SetMovie(Clip()); };
    const auto empty = [&] { A().SetMovie(nullptr); };
    EXPECT_FALSE(unloads(fill));
    EXPECT_FALSE(unloads([&] { empty(), fill(); }));
    EXPECT_TRUE(unloads(empty));
}

TEST_F(DeliveryTest, AFailureAbandonsItsHandlerAloneAndNamesTheFileConcerned) {
    CapturedStderr captured;
    Push().OnAction = [&] {
        Form().SetTitle("lost");
        Form().SetTitle("kept");
        (void)GetFolderItem("Root:no such\nfolder:")->AbsolutePath();
        FAIL();
    };
    const int updates = Windows().RecordOf("Console").updates;
    Push().ReportClick();
    EXPECT_EQ(Windows().RecordOf("Console").updates, updates + 1) << "what it did before is shown, once";
    Push().OnAction = [&] { (void)*Ref<int>(); };
    Push().ReportClick();
    EXPECT_EQ(
        captured.Lines(),
        (Names{"kirolane: Console.Push Action: NilObjectException (Root:no such folder:: no such folder)",
               "kirolane: Console.Push Action: NilObjectException"}));
}

TEST_F(DeliveryTest, WhatComesDuringADeliveryWaitsForItsEndInItsOrder) {
    Push().OnAction = [&] { Form().Log("push"); };
    Get<Listbox>("Grid").OnKeyDown = [&](const std::string&) {
        Form().Log("key");
        return true;
    };
    Do([&] {
        for (const char* posted : {"posted 1", "posted 2"})
            TheRuntime().Mail().Post([this, posted] { Form().Log(posted); });
        Push().ReportClick();
        Form().ReportRestored();
        EXPECT_FALSE(Get<Listbox>("Grid").ReportKey("x")) << "what needs its answer now is refused";
        Windows().RunReady();
        Form().Log("handler");
    });
    Settle();
    EXPECT_EQ(Form().TakeLog(), (Names{"handler", "posted 1", "posted 2", "push", "Restore"}));
}

TEST_F(DeliveryTest, TheChooserShowsWhatWasOrderedAndLetsOnlyThreadsRun) {
    int turns = 0;
    int ticks = 0;
    int chosen = 0;
    Get<Thread>("First").OnRun = [&]() -> Task {
        for (; turns < 5; ++turns) {
            Form().SetTitle("turn " + std::to_string(turns));
            co_await Yield();
        }
    };
    Get<Timer>("Clock").OnAction = [&] { ++ticks; };
    Push().OnAction = [&] {
        ++chosen;
        A().SetMovie(Clip());
        A().Play();
        Get<Thread>("First").Run();
        Form().ReportRestored(); // before the chooser: it waits
        EXPECT_EQ(SelectFolder()->AbsolutePath(), "Root:");
    };
    Windows().PrepareFolder("/", [&] {
        EXPECT_TRUE(Media().Player("Console.A")->Running()) << "the orders so far are carried out";
        const int updates = Windows().RecordOf("Console").updates;
        Push().ReportClick();
        Form().ReportMoved(70, 80);
        EXPECT_EQ(Form().Left(), 70) << "where the window lies is known all the same";
        Form().ReportDeactivated();
        Windows().SetScreens({{500, 0, 800, 600}});
        TheRuntime().ReportScreensChanged();
        Advance(3000);
        EXPECT_EQ(turns, 5);
        EXPECT_GT(Windows().RecordOf("Console").updates, updates) << "what a thread does is shown";
        EXPECT_TRUE(Form().TakeLog().empty());
    });
    Push().ReportClick();
    Settle();
    EXPECT_EQ(chosen, 1) << "a command meanwhile is dropped";
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(Form().TakeLog(), (Names{"Restore", "Moved"}));
    EXPECT_EQ(Form().Left(), 500) << "it follows the displays that changed meanwhile";
    EXPECT_FALSE(Form().Active());
    Advance(1000);
    EXPECT_EQ(ticks, 1);
}

} // namespace kirolane::tests
