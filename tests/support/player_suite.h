#pragma once

// What every media engine owes the players, told through the contract alone. To be included by one source of
// a test program, which instantiates PlayerSuite with a factory of its harness.

#include "contract/movieplayer.h"
#include "support/console_test.h"

#include <cmath>
#include <limits>
#include <set>
#include <sstream>

namespace kirolane::tests {

/// What the suite needs of a media engine. One harness serves one test: it is made before the runtime and
/// goes after it. The player is "Console.A".
class PlayerHarness {
public:
    struct Clip {
        std::string path; ///< native
        double seconds = 0.0;
    };
    struct Facts {
        Clip clip;        ///< plays from 4 to 8 whole seconds, with sound and, if there are any, pictures
        Clip other;       ///< at least 1 s shorter
        double tolerance; ///< seconds by which a running player may lie off an ideal one; at most 0.3
        double lengthTolerance; ///< seconds by which a Duration may lie off the length; at most 0.1
    };
    explicit PlayerHarness(Facts facts) : is(std::move(facts)) {}
    virtual ~PlayerHarness() = default;

    virtual MediaEngine& Media() = 0;
    /// Lets time pass, with all that the runtime has to do, until the condition holds; it is asked at least
    /// every 20 ms of the time that players play in. False if it does not hold within 20 s of that time.
    virtual bool WaitUntil(const std::function<bool()>& condition) = 0;
    /// Seconds of the time that players play in, from anywhere.
    [[nodiscard]] virtual double Now() const = 0;

    const Facts is;
    headless::HandClock clock;
    headless::HeadlessWindows windows{clock};
};

/// The suite's parameter: INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values(MakeMpvHarness)).
using PlayerHarnessFactory = std::unique_ptr<PlayerHarness> (*)();

class PlayerSuite : public ::testing::TestWithParam<PlayerHarnessFactory> {
protected:
    enum class Then : std::uint8_t { Rests, RestsRunning, Plays };
    static constexpr double kEnd = std::numeric_limits<double>::infinity();
    static constexpr double kMoment = 0.4; ///< seconds

    /// What one handler does; the events that fire within it, and none later; where the player stands at its
    /// end, and what it then does.
    struct Step {
        std::string acts; ///< "clip", "other" and "none" assign; "play", "stop", "at 1.5", "rate 1.25"
        std::string events;
        double place = 0.0;
        Then then = Then::Rests;
    };

    PlayerSuite() {
        std::string failure;
        EXPECT_TRUE(m_runtime.Start([] { Instance<ConsoleForm>(); }, failure)) << failure;
        Main().OnPlay = [this] { m_events += "Play "; };
        Main().OnStop = [this] { m_events += "Stop "; };
    }

    static MoviePlayer& Main() { return *Instance<ConsoleForm>()->Control<MoviePlayer>("A"); }
    PlayerHarness& Harness() { return *m_harness; }
    void Do(const std::function<void()>& handler) {
        EXPECT_TRUE(m_runtime.DeliverNow(*Instance<ConsoleForm>(), "test", handler));
    }
    void Assign(const PlayerHarness::Clip& clip) {
        Main().SetMovie(clip.path.empty() ? Ref<Movie>() : Ref(std::make_shared<Movie>(clip.path)));
        m_length = clip.seconds;
    }
    void Act(const std::string& acts) {
        std::istringstream words(acts);
        for (std::string word; words >> word;) {
            if (word == "clip" || word == "other")
                Assign(word == "clip" ? m_harness->is.clip : m_harness->is.other);
            else if (word == "none")
                Assign({});
            else if (word == "play")
                Main().Play();
            else if (word == "stop")
                Main().Stop();
            else if (std::string number; words >> number)
                word == "at" ? Main().SetPosition(std::stod(number)) : Main().SetRate(std::stod(number));
        }
    }
    void Walk(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.acts);
            double place = 0.0;
            Do([&] {
                Act(step.acts);
                EXPECT_EQ(std::exchange(m_events, ""), step.events);
                place = std::min(step.place, Main().Duration());
                EXPECT_EQ(Main().Position(), place);
            });
            step.then == Then::Plays ? PlaysFrom(place) : RestsAt(place);
            EXPECT_EQ(m_events, "");
            EXPECT_EQ(Main().Running(), step.then != Then::Rests);
            EXPECT_EQ(Main().Movie().IsNil(), m_length == 0.0);
            EXPECT_NEAR(Main().Duration(), m_length, m_harness->is.lengthTolerance);
        }
    }
    void RestsAt(double place) {
        const double until = m_harness->Now() + kMoment;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            EXPECT_EQ(Main().Position(), place);
            return m_harness->Now() >= until || HasFailure();
        }));
    }
    /// It reads neither what was before nor what cannot be yet.
    void PlaysFrom(double place) {
        const double began = m_harness->Now();
        double last = place;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            const double position = Main().Position();
            EXPECT_GE(position, last);
            EXPECT_LE(position, place + (m_harness->Now() - began) * Main().Rate() + m_harness->is.tolerance);
            last = position;
            return position > place + kMoment;
        }));
        EXPECT_LT(last, Main().Duration());
    }
    /// It plays on for that long, smoothly, never backwards and at its rate.
    void PlaysOn(double seconds) {
        const double began = m_harness->Now();
        const double from = Main().Position();
        double last = from;
        std::set<double> readings;
        EXPECT_TRUE(m_harness->WaitUntil([&] {
            EXPECT_GE(Main().Position(), last);
            last = Main().Position();
            readings.insert(last);
            return m_harness->Now() >= began + seconds;
        }));
        EXPECT_NEAR(last - from, (m_harness->Now() - began) * Main().Rate(), m_harness->is.tolerance);
        EXPECT_GE(static_cast<double>(readings.size()), 20 * seconds) << "it reads between the frames too";
    }

private:
    TemporaryFolder m_folder;
    posix::PosixFileSystem m_files{m_folder.Path(), m_folder.Path()};
    std::unique_ptr<PlayerHarness> m_harness = GetParam()();
    Runtime m_runtime{m_harness->windows, m_harness->Media(), m_files};
    std::string m_events;
    double m_length = 0.0; ///< of what is assigned
};

TEST_P(PlayerSuite, AnEmptyPlayerTakesNoOrdersAlsoOnceEmptied) {
    EXPECT_EQ(Main().Rate(), 1.0);
    Walk({{"play at 3 stop", ""},
          {"clip at 0.2 play", "Play ", 0.2, Then::Plays},
          {"none play at 3 stop", ""},
          {"clip play", "Play ", 0.0, Then::Plays}});
}

TEST_P(PlayerSuite, AStoppedMovieRestsExactlyWhereItIsWrittenAndEventsTellOfChangesAlone) {
    Walk({{"clip stop", ""},
          {"at 1.2345", "", 1.2345},
          {"at -1", ""},
          {"at 1e9", "", kEnd},
          {"at 0.1", "", 0.1},
          {"at nan play play stop stop", "Play Stop "}});
}

TEST_P(PlayerSuite, ARunningPlayerReadsSmoothlyAndAStopHoldsTheReading) {
    Walk({{"clip play", "Play ", 0.0, Then::Plays}});
    PlaysOn(1.5);
    const double before = Main().Position();
    double read = 0.0;
    Do([&] {
        Main().Stop();
        read = Main().Position();
    });
    EXPECT_NEAR(read, before, 0.05);
    RestsAt(read);
    Do([&] { Main().Play(); });
    PlaysFrom(read);
}

TEST_P(PlayerSuite, AWrittenPositionOnARunningPlayerReadsAtOnceAndGoesOnFromThere) {
    Walk({{"clip at 0.2 play", "Play ", 0.2, Then::Plays},
          {"at 0.1 at 2.5", "", 2.5, Then::Plays}, // only the last of a handler counts
          {"at 0.1 at 1", "", 1.0, Then::Plays}});
}

TEST_P(PlayerSuite, AtTheEndItReadsExactlyDurationUntilAPositionIsWritten) {
    const double before = Harness().is.clip.seconds - 0.7;
    Walk({{"clip at " + std::to_string(before) + " play", "Play ", before, Then::Plays}});
    ASSERT_TRUE(Harness().WaitUntil([&] {
        EXPECT_LE(Main().Position(), Main().Duration());
        return Main().Position() == Main().Duration();
    }));
    Walk({{"", "", kEnd, Then::RestsRunning}, // a movie that runs out fires nothing
          {"at 1", "", 1.0, Then::Plays},
          {"at 1e9", "", kEnd, Then::RestsRunning},
          {"stop", "Stop ", kEnd},
          {"play", "Play ", kEnd, Then::RestsRunning},
          {"stop at 0 play", "Stop Play ", 0.0, Then::Plays}});
}

TEST_P(PlayerSuite, RateChangesTheSpeedOfARunningPlayerAndStartsNone) {
    Walk({{"rate 1.25 clip", ""}, // held on an empty player
          {"play", "Play ", 0.0, Then::Plays}});
    for (const double rate : {1.25, 0.75}) {
        Do([&] { Act("rate " + std::to_string(rate) + " rate 0 rate -1 rate inf"); });
        EXPECT_EQ(Main().Rate(), rate);
        PlaysOn(1.0);
    }
}

TEST_P(PlayerSuite, VolumeIsClampedAndHoldsForTheNextMovie) {
    EXPECT_EQ(Main().Volume(), 256);
    Do([&] {
        for (const auto& [written, held] : {std::pair{-5, 0}, {1000, 256}, {100, 100}}) {
            Main().SetVolume(written);
            EXPECT_EQ(Main().Volume(), held);
        }
        Act("clip other");
    });
    EXPECT_EQ(Main().Volume(), 100);
}

TEST_P(PlayerSuite, AssigningToARunningPlayerLeavesItStoppedAtTheBeginningWithoutAnEvent) {
    Walk({{"clip at 1 play", "Play ", 1.0, Then::Plays},
          {"at 3 other", ""}, // the position goes with the movie
          {"play", "Play ", 0.0, Then::Plays},
          {"stop at 0 clip at 1 play", "Stop Play ", 1.0, Then::Plays}}); // nothing of the first is left
}

} // namespace kirolane::tests
