#pragma once

// What every media engine owes the players, told through the contract alone. To be included by one source of
// a test program, which instantiates PlayerSuite with a factory of its harness.

#include "backends/posix/posix_filesystem.h"
#include "contract/core/runtime.h"
#include "contract/implicit_instance.h"
#include "contract/movieplayer.h"
#include "contract/window.h"
#include "support/player_harness.h"
#include "support/temporary_folder.h"

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

inline constexpr WindowDesign kPlayerFormDesign{.title = "Players", .width = 640, .height = 256};
inline constexpr ControlDesign kPlayerFormControls[] = {
    {.name = "Main", .kind = ControlKind::MoviePlayer, .rect = {320, 0, 320, 256}},
};

class PlayerForm : public Window {
public:
    PlayerForm() : Window("PlayerForm", kPlayerFormDesign) {}

protected:
    using Window::CreateControls;
    void CreateControls() override { CreateControls(kPlayerFormControls); }
};

class PlayerSuite : public ::testing::TestWithParam<PlayerHarnessFactory> {
protected:
    using Events = std::vector<std::string>;

    PlayerSuite() {
        std::string failure;
        EXPECT_TRUE(m_runtime.Start([] { Instance<PlayerForm>(); }, failure)) << failure;
        Main().OnPlay = [this] { m_events.emplace_back("Play"); };
        Main().OnStop = [this] { m_events.emplace_back("Stop"); };
    }

    MoviePlayer& Main() { return *Instance<PlayerForm>()->Control<MoviePlayer>("Main"); }
    PlayerHarness& Harness() { return *m_harness; }
    /// Names of the events fired since the last call.
    Events TakeEvents() { return std::exchange(m_events, {}); }

    /// One handler: what it orders reaches the engine at its end.
    void Do(const std::function<void()>& handler) {
        EXPECT_TRUE(m_runtime.DeliverNow(*Instance<PlayerForm>(), "test", handler));
    }
    Ref<Movie> Clip() { return Ref(std::make_shared<Movie>(m_harness->is.clip)); }
    Ref<Movie> OtherClip() { return Ref(std::make_shared<Movie>(m_harness->is.otherClip)); }

    /// The clip in Main, running, some 0.3 s after `from`.
    void PlayFrom(double from) {
        Do([&] {
            Main().SetMovie(Clip());
            Main().SetPosition(from);
            Main().Play();
        });
        ASSERT_TRUE(m_harness->WaitUntil([&] { return Main().Position() > from + 0.3; }));
        TakeEvents();
    }
    /// Lets so many seconds pass; `watch` is called all along.
    void Pass(double seconds, const std::function<void()>& watch) {
        const double until = m_harness->Now() + seconds;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            watch();
            return m_harness->Now() >= until;
        }));
    }
    /// It reads exactly that for so many seconds, and nothing fires.
    void Rests(double position, double seconds) {
        Pass(seconds, [&] { EXPECT_EQ(Main().Position(), position); });
        EXPECT_EQ(TakeEvents(), Events{});
    }
    /// It plays `seconds` on from there, and reads neither what was before nor what cannot be yet.
    void GoesOn(double from, double seconds) {
        const double began = m_harness->Now();
        double last = from;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            const double position = Main().Position();
            EXPECT_GE(position, last);
            EXPECT_LE(position, from + m_harness->Now() - began + m_harness->is.tolerance);
            last = position;
            return position > from + seconds;
        }));
        EXPECT_LT(last, Main().Duration());
    }
    void ExpectEmpty() {
        EXPECT_TRUE(Main().Movie().IsNil());
        EXPECT_EQ(Main().Duration(), 0.0);
        EXPECT_FALSE(Main().Running());
        EXPECT_EQ(Main().Position(), 0.0);
    }

private:
    TemporaryFolder m_folder;
    posix::PosixFileSystem m_files{m_folder.Path(), m_folder.Path()};
    std::unique_ptr<PlayerHarness> m_harness = GetParam()();
    Runtime m_runtime{m_harness->Windows(), m_harness->Media(), m_files};
    Events m_events;
};

TEST_P(PlayerSuite, AnEmptyPlayerReadsItsDefaultsAndTakesNoOrdersAlsoOnceEmptied) {
    EXPECT_EQ(Main().Volume(), 256);
    EXPECT_EQ(Main().Rate(), 1.0);
    for (const bool emptied : {false, true}) {
        if (emptied)
            PlayFrom(0.2);
        Do([&] {
            if (emptied)
                Main().SetMovie(nullptr);
            Main().Play();
            Main().SetPosition(3.0);
            Main().Stop();
            ExpectEmpty();
        });
        Rests(0.0, 0.3);
        ExpectEmpty();
    }
    PlayFrom(0.0); // and it plays again
}

TEST_P(PlayerSuite, AnAssignedMovieRestsAtItsBeginningThenExactlyWhereItIsWritten) {
    Do([&] {
        Main().SetMovie(Clip());
        EXPECT_FALSE(Main().Movie().IsNil());
        EXPECT_NEAR(Main().Duration(), Harness().is.length, Harness().is.lengthTolerance);
    });
    const double duration = Main().Duration();
    Rests(0.0, 0.4);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [written, read] :
         {std::pair{1.2345, 1.2345}, {-1.0, 0.0}, {1e9, duration}, {0.1, 0.1}, {nan, 0.0}}) {
        Do([&, w = written, r = read] {
            Main().SetPosition(w);
            EXPECT_EQ(Main().Position(), r);
        });
        Rests(read, 0.3);
    }
    EXPECT_EQ(Main().Duration(), duration);
    EXPECT_FALSE(Main().Running());
}

TEST_P(PlayerSuite, PlayAndStopFireTheirEventsWithinTheCallAndOnlyForAChange) {
    Do([&] {
        Main().SetMovie(Clip());
        Main().Stop();
        EXPECT_EQ(TakeEvents(), Events{});
        for (const char* event : {"Play", ""}) {
            Main().Play();
            EXPECT_TRUE(Main().Running());
            EXPECT_EQ(TakeEvents(), *event == 0 ? Events{} : Events{event});
        }
        Main().Stop();
        EXPECT_EQ(TakeEvents(), Events{"Stop"});
        EXPECT_FALSE(Main().Running());
    });
    Rests(0.0, 0.3); // started and stopped in one handler, it never ran
}

TEST_P(PlayerSuite, ARunningPlayerReadsSmoothlyAndNeverBackwardsAndAStopHoldsTheReading) {
    PlayFrom(0.0);
    const double began = Harness().Now();
    const double from = Main().Position();
    double last = from;
    std::set<double> readings;
    Pass(1.5, [&] {
        const double position = Main().Position();
        EXPECT_GE(position, last);
        EXPECT_LE(position, Main().Duration());
        last = position;
        readings.insert(position);
    });
    EXPECT_NEAR(last - from, Harness().Now() - began, Harness().is.tolerance);
    EXPECT_GE(readings.size(), 30U) << "it reads between the frames too";

    double read = 0.0;
    Do([&] {
        read = Main().Position();
        Main().Stop();
        EXPECT_NEAR(Main().Position(), read, 0.05);
        read = Main().Position();
    });
    EXPECT_EQ(TakeEvents(), Events{"Stop"});
    Rests(read, 0.5);
    Do([&] { Main().Play(); });
    Pass(0.5, [&] { EXPECT_GE(Main().Position(), read); });
    EXPECT_NEAR(Main().Position(), read + 0.5, Harness().is.tolerance);
}

TEST_P(PlayerSuite, AWrittenPositionOnARunningPlayerReadsAtOnceAndGoesOnFromThere) {
    PlayFrom(0.2);
    for (const double target : {2.5, 1.0}) { // forth and back
        Do([&] {
            Main().SetPosition(0.1); // only the last of a handler counts
            Main().SetPosition(target);
            EXPECT_EQ(Main().Position(), target);
        });
        GoesOn(target, 0.5);
        EXPECT_TRUE(Main().Running());
    }
    EXPECT_EQ(TakeEvents(), Events{});
}

TEST_P(PlayerSuite, AtTheEndItReadsExactlyDurationUntilAPositionIsWritten) {
    PlayFrom(Harness().is.length - 0.7);
    const double duration = Main().Duration();
    ASSERT_TRUE(Harness().WaitUntil([&] {
        EXPECT_LE(Main().Position(), duration);
        return Main().Position() == duration;
    }));
    Rests(duration, 0.5); // a movie that runs out fires nothing
    EXPECT_TRUE(Main().Running());
    Do([&] { Main().SetPosition(1.0); });
    GoesOn(1.0, 0.3);
    Do([&] { Main().SetPosition(duration); });
    Rests(duration, 0.6);
    EXPECT_TRUE(Main().Running());
    Do([&] { Main().Stop(); });
    Do([&] { Main().Play(); });
    EXPECT_EQ(TakeEvents(), (Events{"Stop", "Play"}));
    Rests(duration, 0.3);
    Do([&] {
        Main().Stop();
        Main().SetPosition(0.0);
        Main().Play();
    });
    GoesOn(0.0, 0.3);
}

TEST_P(PlayerSuite, RateChangesTheSpeedOfARunningPlayerAndStartsNone) {
    Do([&] {
        Main().SetRate(1.25); // held on an empty player
        Main().SetMovie(Clip());
    });
    Rests(0.0, 0.3);
    EXPECT_FALSE(Main().Running());
    Do([&] { Main().Play(); });
    ASSERT_TRUE(Harness().WaitUntil([&] { return Main().Position() > 0.3; }));
    for (const double rate : {1.25, 0.75}) {
        for (const double written : {rate, 0.0, -1.0, std::numeric_limits<double>::infinity()})
            Do([&] { Main().SetRate(written); });
        EXPECT_EQ(Main().Rate(), rate);
        const double began = Harness().Now();
        const double from = Main().Position();
        Pass(1.0, [] {});
        EXPECT_NEAR((Main().Position() - from) / (Harness().Now() - began), rate, Harness().is.tolerance);
    }
}

TEST_P(PlayerSuite, VolumeIsClampedAndHoldsForTheNextMovie) {
    Do([&] {
        for (const auto& [written, held] : {std::pair{-5, 0}, {1000, 256}, {100, 100}}) {
            Main().SetVolume(written);
            EXPECT_EQ(Main().Volume(), held);
        }
        Main().SetMovie(Clip());
        Main().SetMovie(OtherClip());
    });
    EXPECT_EQ(Main().Volume(), 100);
}

TEST_P(PlayerSuite, AssigningToARunningPlayerLeavesItStoppedAtTheBeginningWithoutAnEvent) {
    PlayFrom(1.0);
    Do([&] {
        Main().SetPosition(3.0); // dropped by the assignment
        Main().SetMovie(OtherClip());
        EXPECT_FALSE(Main().Running());
        EXPECT_NEAR(Main().Duration(), Harness().is.otherLength, Harness().is.lengthTolerance);
    });
    Rests(0.0, 0.4);
    Do([&] { Main().Play(); });
    GoesOn(0.0, 0.5);
    TakeEvents();
    Do([&] { // rewound, then replaced, then started: nothing of the first is left
        Main().Stop();
        Main().SetPosition(0.0);
        Main().SetMovie(Clip());
        Main().SetPosition(1.0);
        Main().Play();
        EXPECT_EQ(Main().Position(), 1.0);
    });
    EXPECT_EQ(TakeEvents(), (Events{"Stop", "Play"}));
    GoesOn(1.0, 0.4);
    EXPECT_NEAR(Main().Duration(), Harness().is.length, Harness().is.lengthTolerance);
}

} // namespace kirolane::tests
