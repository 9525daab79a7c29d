#include "contract/thread.h"

#include "contract/exceptions.h"
#include "contract/folderitem.h"
#include "support/captured_stderr.h"
#include "support/console_test.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace kirolane::tests {

class ThreadTest : public ConsoleTest {
protected:
    Thread& First() { return Get<Thread>("First"); }
    Thread& Second() { return Get<Thread>("Second"); }

    /// Has the thread run a body of so many turns, each of which appends `name` to the record.
    void Run(Thread& thread, char name, int count) {
        thread.OnRun = [this, name, count]() -> Task { return Body(name, count); };
        thread.Run();
    }
    std::string TakeTurns() { return std::exchange(m_turns, {}); }

    std::string m_turns;

private:
    Task Body(char name, int count) {
        for (int i = 0; i < count; ++i) {
            m_turns += name;
            co_await Yield();
        }
    }
};

TEST_F(ThreadTest, RunsOnlyWhereTheRunningCodeYields) {
    First().Kill(); // nothing yet
    Do([&] {
        Run(First(), 'a', 3);
        Run(Second(), 'b', 2);
        EXPECT_THROW(First().Run(), ThreadAlreadyRunningException);
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

TEST_F(ThreadTest, KillEndsTheBodyWhereItIsAndReleasesWhatItHolds) {
    const auto held = std::make_shared<int>();
    First().OnRun = [&held]() -> Task {
        for (const auto kept = held;;)
            co_await Yield();
    };
    First().Run();
    Do([] { YieldToThreads(); });
    EXPECT_EQ(held.use_count(), 2);
    Do([&] { First().Kill(); });
    EXPECT_FALSE(First().Running());
    EXPECT_EQ(held.use_count(), 1);
    Do([&] { // killed and run anew in one handler, as the folder buttons do
        Run(First(), 'a', 2);
        First().Kill();
        First().Run();
    });
    Settle();
    EXPECT_EQ(TakeTurns(), "aa");
}

TEST_F(ThreadTest, ABodyThatKillsItsOwnThreadEndsAtItsNextYield) {
    First().OnRun = [this]() -> Task {
        m_turns += '1';
        First().Kill();
        YieldToThreads(); // no yield within a turn
        m_turns += '2';
        co_await Yield();
        m_turns += '3';
    };
    First().Run();
    Run(Second(), 'b', 3);
    Settle();
    EXPECT_EQ(TakeTurns(), "12bbb");
    EXPECT_FALSE(First().Running());
}

TEST_F(ThreadTest, OneThreadMayKillAndStartTheOther) {
    Run(Second(), 'b', 100);
    First().OnRun = [this]() -> Task {
        co_await Yield();
        Second().Kill();
        Run(Second(), 'c', 2);
    };
    First().Run();
    Settle();
    EXPECT_EQ(TakeTurns(), "bbcc");
}

TEST_F(ThreadTest, AFailureEndsThatThreadAlone) {
    CapturedStderr captured;
    First().OnRun = []() -> Task {
        co_await Yield();
        (void)GetFolderItem("Root:gone:")->Count();
    };
    First().Run();
    Run(Second(), 'b', 4);
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
        while (!stop)
            co_await Yield();
    };
    First().Run();
    auto shortest = std::chrono::nanoseconds::max(); // some are held up by the machine's other work
    for (int i = 0; i < 21; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(TheRuntime().RunIdleSlice());
        shortest = std::min<std::chrono::nanoseconds>(shortest, std::chrono::steady_clock::now() - begin);
    }
    EXPECT_GE(shortest, std::chrono::milliseconds(2));
    EXPECT_LE(shortest, std::chrono::milliseconds(4));
    stop = true;
    Settle();
    EXPECT_FALSE(TheRuntime().RunIdleSlice());
}

} // namespace kirolane::tests
