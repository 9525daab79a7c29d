#include "contract/thread.h"

#include "contract/exceptions.h"
#include "contract/folderitem.h"
#include "support/captured_stderr.h"
#include "support/console_test.h"

#include <memory>

namespace kirolane::tests {

class ThreadTest : public ConsoleTest {
protected:
    Thread& First() { return Get<Thread>("First"); }
    Thread& Second() { return Get<Thread>("Second"); }

    /// Has the thread do what the text says: "." yields, "1" and "2" kill the first and the second one, "*"
    /// starts the second anew, "!" fails; all else goes into the record.
    void Run(Thread& thread, const char* text) {
        thread.OnRun = [this, text]() -> Task { return Body(text); };
        thread.Run();
    }
    std::string TakeTurns() { return std::exchange(m_turns, {}); }

private:
    Task Body(const char* text) {
        for (; *text != 0; ++text) {
            if (*text == '.')
                co_await Yield();
            else if (*text == '1' || *text == '2')
                (*text == '1' ? First() : Second()).Kill();
            else if (*text == '*')
                Second().Run();
            else if (*text == '!')
                (void)GetFolderItem("Root:gone:")->Count();
            else
                m_turns += *text;
        }
    }

    std::string m_turns;
};

TEST_F(ThreadTest, OneTurnEachAndAKillOrAFailureEndsThatOneAlone) {
    CapturedStderr captured;
    const struct {
        const char* first;
        const char* second;
        const char* turns;
    } rows[] = {
        {"a.a.a", "b.b", "ababa"}, {"a1b.c", "x.x.x", "abxxx"}, // by its own hand: at its next yield
        {"2*a", "b.b.c", "abbc"},                               // a new run of the other, which had not begun
        {".2*", "b.b.c", "bbbc"},                               // and of one that had
        {"a.!b", "x.x.x", "axxx"}, {"1.2", "", ""},
    };
    for (const auto& [first, second, turns] : rows) {
        Run(First(), first);
        Run(Second(), second);
        Settle();
        EXPECT_EQ(TakeTurns(), turns) << first;
        EXPECT_FALSE(First().Running() || Second().Running()) << first;
    }
    EXPECT_EQ(captured.Lines(),
              std::vector<std::string>{
                  "kirolane: Console.First Run: NilObjectException (Root:gone:: no such folder)"});
}

TEST_F(ThreadTest, RunsOnlyWhereTheRunningCodeYieldsAndAKillReleasesWhatItHolds) {
    CapturedStderr captured;
    const auto held = std::make_shared<int>();
    Do([&] {
        First().OnRun = [&held]() -> Task {
            for (const auto kept = held;;)
                co_await Yield();
        };
        First().Run();
        EXPECT_THROW(First().Run(), ThreadAlreadyRunningException);
        EXPECT_EQ(held.use_count(), 1);
        YieldToThreads();
        EXPECT_EQ(held.use_count(), 2);
        First().Kill();
        EXPECT_EQ(held.use_count(), 1);
        Run(First(), "a.!"); // anew in the same handler, as the folder buttons do
        YieldToThreads();
        EXPECT_EQ(TakeTurns(), "a");
        Runtime::Current().Failures().NoteFile("/other", "cause"); // the handler's, not the thread's
        YieldToThreads();
        (void)*Ref<int>();
    });
    EXPECT_EQ(captured.Lines(),
              (std::vector<std::string>{
                  "kirolane: Console.First Run: NilObjectException (Root:gone:: no such folder)",
                  "kirolane: test: NilObjectException (/other: cause)"}));
}

} // namespace kirolane::tests
