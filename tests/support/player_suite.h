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
    PlayerSuite()
        : m_files(m_folder.Path(), m_folder.Path()), m_harness(GetParam()()),
          m_runtime(std::make_unique<Runtime>(m_harness->Windows(), m_harness->Media(), m_files)) {
        std::string failure;
        EXPECT_TRUE(m_runtime->Start([] { Instance<PlayerForm>(); }, failure)) << failure;
        Main().OnPlay = [this] { m_events.emplace_back("Play"); };
        Main().OnStop = [this] { m_events.emplace_back("Stop"); };
    }

    MoviePlayer& Main() { return *Instance<PlayerForm>()->Control<MoviePlayer>("Main"); }
    PlayerHarness& Harness() { return *m_harness; }
    /// Names of the events fired since the last call.
    std::vector<std::string> TakeEvents() { return std::exchange(m_events, {}); }

    /// One handler: what it orders reaches the engine at its end.
    void Do(const std::function<void()>& handler) {
        EXPECT_TRUE(m_runtime->DeliverNow(*Instance<PlayerForm>(), "test", handler));
    }
    static Ref<Movie> File(const std::string& path) { return Ref(std::make_shared<Movie>(path)); }
    Ref<Movie> Clip() { return File(m_harness->Clip()); }
    Ref<Movie> OtherClip() { return File(m_harness->OtherClip()); }

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
    void Pass(
        double seconds, const std::function<void()>& watch = [] {}) {
        const double until = m_harness->Now() + seconds;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            watch();
            return m_harness->Now() >= until;
        }));
    }

private:
    TemporaryFolder m_folder;
    posix::PosixFileSystem m_files;
    std::unique_ptr<PlayerHarness> m_harness;
    std::unique_ptr<Runtime> m_runtime;
    std::vector<std::string> m_events;
};

TEST_P(PlayerSuite, AnEmptyPlayerReadsItsDefaultsAndTakesNoOrders) {
    EXPECT_EQ(Main().Volume(), 256);
    EXPECT_EQ(Main().Rate(), 1.0);
    Do([&] {
        Main().Play();
        Main().SetPosition(3.0);
        Main().Stop();
        EXPECT_FALSE(Main().Running());
    });
    Pass(0.2);
    EXPECT_TRUE(Main().Movie().IsNil());
    EXPECT_EQ(Main().Position(), 0.0);
    EXPECT_EQ(Main().Duration(), 0.0);
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_P(PlayerSuite, AnAssignedMovieRestsAtItsBeginningWithItsDurationKnown) {
    Do([&] {
        Main().SetMovie(Clip());
        EXPECT_FALSE(Main().Movie().IsNil());
        EXPECT_NEAR(Main().Duration(), Harness().LengthSeconds(), Harness().LengthTolerance());
    });
    const double duration = Main().Duration();
    Pass(0.4, [&] {
        EXPECT_EQ(Main().Position(), 0.0);
        EXPECT_EQ(Main().Duration(), duration);
    });
    EXPECT_FALSE(Main().Running());
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_P(PlayerSuite, PlayAndStopFireTheirEventsWithinTheCallAndOnlyForAChange) {
    Do([&] {
        Main().SetMovie(Clip());
        Main().Stop();
        EXPECT_TRUE(TakeEvents().empty());
        Main().Play();
        EXPECT_EQ(TakeEvents(), std::vector<std::string>{"Play"});
        EXPECT_TRUE(Main().Running());
        Main().Play();
        EXPECT_TRUE(TakeEvents().empty());
        Main().Stop();
        EXPECT_EQ(TakeEvents(), std::vector<std::string>{"Stop"});
        EXPECT_FALSE(Main().Running());
    });
    Pass(0.3);
    EXPECT_EQ(Main().Position(), 0.0) << "started and stopped in one handler, it never ran";
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_P(PlayerSuite, AStoppedPlayerReadsExactlyWhatWasWrittenClamped) {
    Do([&] { Main().SetMovie(Clip()); });
    const double duration = Main().Duration();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double written;
        double read;
    } cases[] = {{1.2345, 1.2345}, {-1.0, 0.0}, {1e9, duration}, {0.1, 0.1}, {nan, 0.0}};
    for (const auto& [written, read] : cases) {
        Do([&, w = written, r = read] {
            Main().SetPosition(w);
            EXPECT_EQ(Main().Position(), r);
        });
        Pass(0.3, [&, r = read] { EXPECT_EQ(Main().Position(), r); });
    }
    EXPECT_FALSE(Main().Running());
}

TEST_P(PlayerSuite, ARunningPlayerReadsSmoothlyAndNeverBackwards) {
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
    EXPECT_NEAR(last - from, Harness().Now() - began, Harness().Tolerance());
    EXPECT_GE(readings.size(), 30U) << "it reads between the frames too";
}

TEST_P(PlayerSuite, AStopHoldsTheReadingAndPlayGoesOnFromIt) {
    PlayFrom(0.5);
    double read = 0.0;
    Do([&] {
        read = Main().Position();
        Main().Stop();
        EXPECT_NEAR(Main().Position(), read, 0.05);
        read = Main().Position();
    });
    Pass(0.5, [&] { EXPECT_EQ(Main().Position(), read); });
    Do([&] {
        Main().Play();
        EXPECT_GE(Main().Position(), read);
    });
    Pass(0.5, [&] { EXPECT_GE(Main().Position(), read); });
    EXPECT_NEAR(Main().Position(), read + 0.5, Harness().Tolerance());
}

TEST_P(PlayerSuite, AWrittenPositionOnARunningPlayerReadsAtOnceAndGoesOnFromThere) {
    PlayFrom(0.2);
    for (const double target : {2.5, 1.0}) { // forth and back
        Do([&] {
            Main().SetPosition(0.1); // only the last of a handler counts
            Main().SetPosition(target);
            EXPECT_EQ(Main().Position(), target);
        });
        const double written = Harness().Now();
        double last = target;
        EXPECT_TRUE(Harness().WaitUntil([&] {
            const double position = Main().Position();
            EXPECT_GE(position, last) << "no reading from before the seek";
            EXPECT_LE(position, target + Harness().Now() - written + Harness().Tolerance());
            last = position;
            return position > target + 0.5;
        }));
        EXPECT_TRUE(Main().Running());
    }
    EXPECT_TRUE(TakeEvents().empty());
}

TEST_P(PlayerSuite, AtTheEndItReadsExactlyDurationUntilAPositionIsWritten) {
    PlayFrom(Harness().LengthSeconds() - 0.7);
    const double duration = Main().Duration();
    const auto goesOnFrom = [&](double from) {
        EXPECT_TRUE(Harness().WaitUntil([&] { return Main().Position() > from + 0.3; }));
        EXPECT_LT(Main().Position(), duration);
    };
    ASSERT_TRUE(Harness().WaitUntil([&] {
        EXPECT_LE(Main().Position(), duration);
        return Main().Position() == duration;
    }));
    Pass(0.5, [&] { EXPECT_EQ(Main().Position(), duration); });
    EXPECT_TRUE(Main().Running());
    EXPECT_TRUE(TakeEvents().empty()) << "a movie that runs out fires nothing";
    Do([&] { Main().SetPosition(1.0); });
    goesOnFrom(1.0);
    Do([&] { Main().SetPosition(duration); });
    Pass(0.6, [&] { EXPECT_EQ(Main().Position(), duration); });
    EXPECT_TRUE(Main().Running());
    Do([&] { Main().Stop(); });
    EXPECT_EQ(TakeEvents(), std::vector<std::string>{"Stop"});
    Do([&] { Main().Play(); });
    Pass(0.3, [&] { EXPECT_EQ(Main().Position(), duration); });
    Do([&] {
        Main().Stop();
        Main().SetPosition(0.0);
        Main().Play();
    });
    goesOnFrom(0.0);
}

TEST_P(PlayerSuite, RateChangesTheSpeedOfARunningPlayerAndStartsNone) {
    Do([&] {
        Main().SetRate(1.25); // held on an empty player
        Main().SetMovie(Clip());
    });
    Pass(0.3);
    EXPECT_FALSE(Main().Running());
    EXPECT_EQ(Main().Position(), 0.0);

    Do([&] { Main().Play(); });
    ASSERT_TRUE(Harness().WaitUntil([&] { return Main().Position() > 0.3; }));
    const auto speedOver = [&](double seconds) {
        const double began = Harness().Now();
        const double from = Main().Position();
        Pass(seconds);
        return (Main().Position() - from) / (Harness().Now() - began);
    };
    EXPECT_NEAR(speedOver(1.0), 1.25, Harness().Tolerance());
    for (const double bad : {0.0, -1.0, std::numeric_limits<double>::infinity()})
        Do([&] { Main().SetRate(bad); });
    EXPECT_EQ(Main().Rate(), 1.25);
    Do([&] { Main().SetRate(0.75); });
    EXPECT_NEAR(speedOver(1.0), 0.75, Harness().Tolerance());
}

TEST_P(PlayerSuite, VolumeIsClampedAndHoldsForTheNextMovie) {
    Do([&] {
        Main().SetVolume(-5);
        EXPECT_EQ(Main().Volume(), 0);
        Main().SetVolume(1000);
        EXPECT_EQ(Main().Volume(), 256);
        Main().SetVolume(100);
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
        EXPECT_EQ(Main().Position(), 0.0);
        EXPECT_NEAR(Main().Duration(), Harness().OtherLengthSeconds(), Harness().LengthTolerance());
    });
    Pass(0.4, [&] { EXPECT_EQ(Main().Position(), 0.0); });
    EXPECT_TRUE(TakeEvents().empty());
    Do([&] { Main().Play(); });
    EXPECT_TRUE(Harness().WaitUntil([&] {
        EXPECT_LT(Main().Position(), 2.0) << "the seek of the movie before must not come through";
        return Main().Position() > 0.5;
    }));
}

TEST_P(PlayerSuite, AssigningNilEmptiesTheRunningPlayerWithoutAnEvent) {
    PlayFrom(0.2);
    Do([&] {
        Main().SetMovie(nullptr);
        EXPECT_EQ(Main().Position(), 0.0);
        EXPECT_EQ(Main().Duration(), 0.0);
        EXPECT_FALSE(Main().Running());
    });
    Pass(0.3, [&] { EXPECT_EQ(Main().Position(), 0.0); });
    EXPECT_EQ(Main().Duration(), 0.0);
    EXPECT_TRUE(TakeEvents().empty());
    PlayFrom(0.0); // and it plays again
}

TEST_P(PlayerSuite, AnInterruptedStartHasOnlyItsNetEffect) {
    PlayFrom(0.2);
    Do([&] { // rewound, then replaced, then started: nothing of the first is left
        Main().Stop();
        Main().SetPosition(0.0);
        Main().SetMovie(OtherClip());
        Main().SetPosition(1.0);
        Main().Play();
        EXPECT_EQ(Main().Position(), 1.0);
    });
    EXPECT_EQ(TakeEvents(), (std::vector<std::string>{"Stop", "Play"}));
    EXPECT_TRUE(Harness().WaitUntil([&] {
        EXPECT_GE(Main().Position(), 1.0);
        return Main().Position() > 1.4;
    }));
    EXPECT_NEAR(Main().Duration(), Harness().OtherLengthSeconds(), Harness().LengthTolerance());
}

} // namespace kirolane::tests
