// How the outside meets the forms: one handler at a time, its net effect at its end, failures, the chooser.

#include "contract/folderitem.h"
#include "contract/listbox.h"
#include "contract/movieplayer.h"
#include "contract/pushbutton.h"
#include "contract/thread.h"
#include "contract/timer.h"
#include "support/captured_stderr.h"
#include "support/contract_test.h"
#include "support/test_form.h"

namespace kirolane {
namespace {

using tests::ConsoleForm;
using Lines = std::vector<std::string>;

class DeliveryTest : public tests::ContractTest {
protected:
    DeliveryTest() {
        Windows().UseDesktop();
        m_form = StartWith<ConsoleForm>();
        Settle();
        m_form->TakeLog();
        Media().Script("clip.mov", {.length = 60});
    }
    ConsoleForm& Form() { return *m_form; }
    template <class T> T& Get(const char* name) { return *m_form->Control<T>(name); }
    static Ref<Movie> Clip() { return Ref(std::make_shared<Movie>("/clips/clip.mov")); }

private:
    Ref<ConsoleForm> m_form;
};

TEST_F(DeliveryTest, RunningPlayersAreReadAsOfOneInstantUntilTheHandlerYieldsOrLoads) {
    auto& a = Get<MoviePlayer>("A");
    auto& b = Get<MoviePlayer>("B");
    Do([&] {
        for (MoviePlayer* player : {&a, &b}) {
            player->SetMovie(Clip());
            player->Play();
        }
    });
    const auto passes = [&](double from) {
        EXPECT_EQ(a.Position(), from);
        Clock().Leap(250);
        EXPECT_EQ(b.Position(), from);
        EXPECT_EQ(a.Position(), from);
    };
    Clock().Leap(2000);
    Do([&] {
        passes(2.0);
        YieldToThreads();
        passes(2.25);
        b.SetMovie(Clip());
        EXPECT_EQ(a.Position(), 2.5);
        Clock().Leap(250);
    });
    EXPECT_EQ(a.Position(), 2.75);
}

TEST_F(DeliveryTest, PlayersAreToldOnceTogetherWhatIsWantedAtTheEnd) {
    auto& a = Get<MoviePlayer>("A");
    auto& b = Get<MoviePlayer>("B");
    Do([&] {
        a.SetMovie(Clip());
        b.SetMovie(Clip());
    });
    Media().ForgetOrders();
    Do([&] {
        for (MoviePlayer* player : {&a, &b}) {
            player->Stop();
            for (const double position : {0.0, 30.0, 20.0, 20.0})
                player->SetPosition(position);
            player->SetRate(1.1);
            player->SetVolume(0);
            player->Play();
        }
        EXPECT_TRUE(Media().Orders().empty());
    });
    const auto& orders = Media().Orders();
    ASSERT_EQ(orders.size(), 2U);
    EXPECT_EQ(orders[0].player, "Console.A");
    EXPECT_EQ(orders[1].player, "Console.B");
    EXPECT_EQ(orders[0].batch, orders[1].batch);
    for (const auto& [player, order, time, batch] : orders) {
        EXPECT_EQ(order.seekTo, 20.0);
        EXPECT_TRUE(order.running);
        EXPECT_EQ(order.rate, 1.1);
        EXPECT_EQ(order.volume, 0);
        EXPECT_FALSE(order.unload);
    }
    Advance(2000);
    EXPECT_NEAR(a.Position(), 22.2, 0.001);
    Do([&] { a.SetVolume(10); });
    EXPECT_EQ(Media().OrdersOf("Console.A").back().order.seekTo, std::nullopt) << "a seek is ordered once";
}

TEST_F(DeliveryTest, AnEmptiedPlayerIsUnloadedOnceAndNotIfAnotherMovieFollows) {
    auto& a = Get<MoviePlayer>("A");
    Do([&] { a.SetMovie(Clip()); });
    Media().ForgetOrders();
    Do([&] {
        a.SetMovie(nullptr);
        a.SetMovie(Clip());
    });
    EXPECT_FALSE(Media().Orders().back().order.unload);
    Do([&] { a.SetMovie(nullptr); });
    EXPECT_TRUE(Media().Orders().back().order.unload);
    Do([&] { a.SetMovie(nullptr); });
    EXPECT_FALSE(Media().Orders().back().order.unload);
}

TEST_F(DeliveryTest, BothOpensOfAHandlerShareFiveSeconds) {
    Media().Script("slow.mov", {.openDelay = 3000});
    const auto slow = Ref(std::make_shared<Movie>("/clips/slow.mov"));
    Do([&] {
        Get<MoviePlayer>("A").SetMovie(slow);
        Get<MoviePlayer>("B").SetMovie(slow);
    });
    EXPECT_FALSE(Get<MoviePlayer>("A").Movie().IsNil());
    EXPECT_TRUE(Get<MoviePlayer>("B").Movie().IsNil());
    EXPECT_EQ(Clock().Now(), 5000);
    Do([&] { Get<MoviePlayer>("B").SetMovie(slow); });
    EXPECT_FALSE(Get<MoviePlayer>("B").Movie().IsNil()) << "the next handler has its own";
}

TEST_F(DeliveryTest, AFailureAbandonsItsHandlerAloneAndNamesTheFileConcerned) {
    tests::CapturedStderr captured;
    auto& push = Get<PushButton>("Push");
    bool after = false;
    push.OnAction = [&] {
        Form().SetTitle("kept");
        (void)GetFolderItem("Root:no such\nfolder:")->AbsolutePath();
        after = true;
    };
    push.ReportClick();
    EXPECT_FALSE(after);
    EXPECT_EQ(Form().Title(), "kept") << "what it did before stands and is shown";
    EXPECT_EQ(Windows().RecordOf("Console").lastControls, Lines{});

    push.OnAction = [&] { (void)*Ref<int>(); };
    push.ReportClick();
    push.OnAction = [&] { after = true; };
    push.ReportClick();
    EXPECT_TRUE(after);
    EXPECT_EQ(
        captured.Lines(),
        (Lines{"kirolane: Console.Push Action: NilObjectException (Root:no such folder:: no such folder)",
               "kirolane: Console.Push Action: NilObjectException"}));
}

TEST_F(DeliveryTest, ReportsDuringADeliveryWaitForItsEndInTheirOrder) {
    auto& push = Get<PushButton>("Push");
    push.OnAction = [&] { Form().Log("push"); };
    int keys = 0;
    Get<Listbox>("Grid").OnKeyDown = [&](const std::string&) { return ++keys > 0; };
    Do([&] {
        push.ReportClick();
        Form().ReportRestored();
        EXPECT_FALSE(Get<Listbox>("Grid").ReportKey("x")) << "what needs its answer now is refused";
        Form().Log("handler");
    });
    Settle();
    EXPECT_EQ(Form().TakeLog(), (Lines{"handler", "push", "Restore"}));
    EXPECT_EQ(keys, 0);
}

TEST_F(DeliveryTest, PostedCallsComeFromTheLoopInOrder) {
    std::string order;
    Do([&] {
        TheRuntime().Mail().Post([&] { order += 'a'; });
        TheRuntime().Mail().Post([&] { order += 'b'; });
        Windows().RunReady();
        EXPECT_EQ(order, "") << "not within a handler";
    });
    Settle();
    EXPECT_EQ(order, "ab");
}

TEST_F(DeliveryTest, TheChooserShowsWhatWasOrderedAndLetsOnlyThreadsRun) {
    auto& push = Get<PushButton>("Push");
    auto& thread = Get<Thread>("First");
    int turns = 0;
    int ticks = 0;
    thread.OnRun = [&]() -> Task {
        for (; turns < 5; ++turns) {
            Form().SetTitle("turn " + std::to_string(turns));
            co_await Yield();
        }
    };
    Get<Timer>("Clock").OnAction = [&] { ++ticks; };
    int chosen = 0;
    push.OnAction = [&] {
        ++chosen;
        Get<MoviePlayer>("A").SetMovie(Clip());
        Get<MoviePlayer>("A").Play();
        thread.Run();
        Form().ReportRestored(); // before the chooser: it waits
        const auto folder = SelectFolder();
        EXPECT_EQ(folder->AbsolutePath(), "Root:");
        EXPECT_EQ(turns, 5);
    };
    Windows().PrepareFolder("/", [&] {
        EXPECT_TRUE(TheRuntime().Modal());
        EXPECT_TRUE(Media().Player("Console.A")->Running()) << "the orders so far are carried out";
        const int updates = Windows().RecordOf("Console").updates;
        push.ReportClick();
        Form().ReportMoved(70, 80);
        Form().ReportDeactivated();
        Advance(3000);
        EXPECT_EQ(turns, 5);
        EXPECT_GT(Windows().RecordOf("Console").updates, updates) << "what a thread does is shown";
        EXPECT_TRUE(Form().TakeLog().empty());
    });
    push.ReportClick();
    Settle();
    EXPECT_EQ(chosen, 1) << "a command meanwhile is dropped";
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(Form().TakeLog(), Lines{"Restore"});
    EXPECT_EQ(Form().Left(), 70) << "where the window lies is known all the same";
    EXPECT_FALSE(Form().Active());
    Advance(1000);
    EXPECT_EQ(ticks, 1);

    push.OnAction = [] { EXPECT_TRUE(SelectFolder().IsNil()); };
    push.ReportClick();
    EXPECT_EQ(Windows().FoldersAsked(), 2);
}

} // namespace
} // namespace kirolane
