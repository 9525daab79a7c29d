#include "contract/thread.h"

#include "contract/exceptions.h"
#include "contract/folderitem.h"
#include "support/captured_stderr.h"
#include "support/contract_test.h"
#include "support/test_form.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace kirolane {
namespace {

using tests::ConsoleForm;

class ThreadTest : public tests::ContractTest {
protected:
    ThreadTest() : m_form(StartWith<ConsoleForm>()) {}
    Thread& First() { return *m_form->Control<Thread>("First"); }
    Thread& Second() { return *m_form->Control<Thread>("Second"); }

    /// A body of so many turns, each of which appends `name` to the record.
    std::function<Task()> Turns(const std::string& name, int count) {
        return [this, name, count]() -> Task { return Body(name, count); };
    }
    std::string TakeTurns() { return std::exchange(m_turns, {}); }

private:
    Task Body(std::string name, int count) {
        for (int i = 0; i < count; ++i) {
            m_turns += name;
            co_await Yield();
        }
    }

    Ref<ConsoleForm> m_form;
    std::string m_turns;
};

TEST_F(ThreadTest, RunsOnlyWhereTheRunningCodeYields) {
    First().OnRun = Turns("a", 3);
    Second().OnRun = Turns("b", 2);
    Do([&] {
        First().Run();
        Second().Run();
        EXPECT_EQ(TakeTurns(), "");
        EXPECT_TRUE(First().Running());
        YieldToThreads();
        EXPECT_EQ(TakeTurns(), "ab") << "one turn each";
    });
    Settle();
    EXPECT_EQ(TakeTurns(), "aba");
    EXPECT_FALSE(First().Running());
    First().Run();
    Settle();
    EXPECT_EQ(TakeTurns(), "aaa") << "it can run again";
}

TEST_F(ThreadTest, RunOnARunningThreadThrowsAndKillOnAStoppedOneDoesNothing) {
    First().Kill();
    First().OnRun = Turns("a", 3);
    First().Run();
    EXPECT_THROW(First().Run(), ThreadAlreadyRunningException);
    Settle();
    EXPECT_EQ(TakeTurns(), "aaa");
}

TEST_F(ThreadTest, KillEndsTheBodyWhereItIsAndReleasesWhatItHolds) {
    auto held = std::make_shared<int>();
    First().OnRun = [held]() -> Task {
        return [](std::shared_ptr<int> kept) -> Task {
            for (;;) {
                (void)kept;
                co_await Yield();
            }
        }(held);
    };
    First().Run();
    Do([] { YieldToThreads(); });
    const auto before = held.use_count();
    Do([&] { First().Kill(); });
    EXPECT_FALSE(First().Running());
    EXPECT_EQ(held.use_count(), before - 1);
    Do([&] { // killed and run anew in one handler, as the folder buttons do
        First().OnRun = Turns("a", 2);
        First().Run();
        First().Kill();
        First().Run();
    });
    Settle();
    EXPECT_EQ(TakeTurns(), "aa");
}

TEST_F(ThreadTest, ABodyThatKillsItsOwnThreadEndsAtItsNextYield) {
    std::string steps;
    First().OnRun = [&]() -> Task {
        return [](Thread& self, std::string& record) -> Task {
            record += '1';
            self.Kill();
            YieldToThreads(); // no yield within a turn
            record += '2';
            co_await Yield();
            record += '3';
        }(First(), steps);
    };
    Second().OnRun = Turns("b", 3);
    First().Run();
    Second().Run();
    Settle();
    EXPECT_EQ(steps, "12");
    EXPECT_FALSE(First().Running());
    EXPECT_EQ(TakeTurns(), "bbb");
}

TEST_F(ThreadTest, OneThreadMayKillAndStartTheOther) {
    Second().OnRun = Turns("b", 100);
    First().OnRun = [&]() -> Task {
        return [](Thread& other, std::function<Task()> next) -> Task {
            co_await Yield();
            other.Kill();
            other.OnRun = next;
            other.Run();
        }(Second(), Turns("c", 2));
    };
    Second().Run();
    First().Run();
    Settle();
    EXPECT_EQ(TakeTurns(), "bbcc");
}

TEST_F(ThreadTest, AFailureEndsThatThreadAlone) {
    tests::CapturedStderr captured;
    First().OnRun = []() -> Task {
        return []() -> Task {
            co_await Yield();
            (void)GetFolderItem("Root:gone:")->Count();
        }();
    };
    Second().OnRun = Turns("b", 4);
    First().Run();
    Second().Run();
    Do([] { // the handler's own file is not the thread's
        Runtime::Current().Failures().NoteFile("/other", "cause");
        YieldToThreads();
        YieldToThreads();
        (void)*Ref<int>();
    });
    Settle();
    EXPECT_FALSE(First().Running());
    EXPECT_EQ(TakeTurns(), "bbbb");
    EXPECT_EQ(captured.Lines(),
              (std::vector<std::string>{
                  "kirolane: Console.First Run: NilObjectException (Root:gone:: no such folder)",
                  "kirolane: test: NilObjectException (/other: cause)"}));
}

TEST_F(ThreadTest, IdleTimeIsGivenInShortSlices) {
    bool stop = false;
    First().OnRun = [&]() -> Task {
        return [](const bool& enough) -> Task {
            while (!enough)
                co_await Yield();
        }(stop);
    };
    First().Run();
    std::vector<double> slices;
    for (int i = 0; i < 21; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(TheRuntime().RunIdleSlice());
        slices.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
    const auto [shortest, longest] = std::minmax_element(slices.begin(), slices.end());
    EXPECT_GE(*shortest, 2.0);
    EXPECT_LE(*shortest, 4.0) << "at least one was not held up by the machine's other work";
    stop = true;
    Settle();
    EXPECT_FALSE(TheRuntime().RunIdleSlice());
}

} // namespace
} // namespace kirolane
