#include "backends/mpv/play_clock.h"

#include <gtest/gtest.h>

namespace kirolane::tests {

static mpv::TimePoint At(double seconds) {
    return mpv::TimePoint(
        std::chrono::duration_cast<mpv::Clock::duration>(std::chrono::duration<double>(seconds)));
}

class PlayClock : public ::testing::Test {
protected:
    PlayClock() {
        clock.Set(0.0);
        clock.Start(At(0.0));
    }
    void ExpectAt(double now, double position) { EXPECT_NEAR(clock.Read(At(now)), position, 1e-6) << now; }

    mpv::PlayClock clock;
};

TEST_F(PlayClock, RunsAtItsRateBetweenReportsAndStandsOtherwise) {
    clock.Set(10.0);
    ExpectAt(5.0, 10.0);
    clock.Observe(50.0, At(5.0)); // halted: what is left of the movie before
    ExpectAt(5.0, 10.0);
    EXPECT_FALSE(clock.Doubtful());
    clock.Start(At(6.0));
    ExpectAt(6.2, 10.2);
    clock.SetRate(0.5, At(6.2));
    ExpectAt(6.3, 10.25);
    clock.Halt(At(6.3));
    ExpectAt(20.0, 10.25);
    clock.Start(At(30.0));
    ExpectAt(30.2, 10.35);
}

TEST_F(PlayClock, ReportsPullItWithoutAJoltAndNeverBackwards) {
    double last = 0.0;
    for (int frame = 1; frame <= 60; ++frame) { // the movie runs 40 ms behind the clock, with 5 ms of jitter
        const double now = frame / 25.0;
        const double read = clock.Read(At(now));
        EXPECT_TRUE(read >= last && read < last + 0.05) << "a step of a frame";
        last = read;
        clock.Observe(now - 0.04 + (frame % 2 == 0 ? 0.005 : -0.005), At(now));
    }
    EXPECT_NEAR(last, 60 / 25.0 - 0.04, 0.01) << "it has come to the movie";
}

TEST_F(PlayClock, AReportFarOffIsTakenAsItIs) {
    clock.Observe(3.0, At(0.1));
    ExpectAt(0.1, 3.0);
    clock.Observe(2.0, At(0.15)); // back: the reading waits for it
    clock.Observe(2.9, At(0.16));
    ExpectAt(0.25, 3.0);
    ExpectAt(0.36, 3.1);
}

TEST_F(PlayClock, TheFirstReportsOfAStartTellNothing) {
    for (int frame = 1; frame <= 12; ++frame) // sound begins a picture late, and takes the pictures with it
        clock.Observe(frame / 25.0 - (frame <= 3 ? 0.0 : 0.04), At(frame / 25.0));
    ExpectAt(0.5, 0.5 - 0.04);
}

TEST_F(PlayClock, WhereReportsCeaseItIsAskedAndStandsWithoutAnAnswerThatTellsMore) {
    double now = 0.0;
    const auto ask = [&] { // the moment at which it is asked
        now = clock.Doubtful()->time_since_epoch() / std::chrono::duration<double>(1.0);
        clock.Ask(At(now));
        return now;
    };
    for (int pictures = 0; pictures < 2; ++pictures) { // far between, under sound
        EXPECT_LT(ask(), 1.3);
        clock.Observe(now, At(now));
        ExpectAt(now + 0.9, now + 0.9);
    }
    ask(); // and under none
    clock.Trust(At(now));
    ExpectAt(now + 0.9, now + 0.9);
    const double stopped = ask() - 0.9;
    for (int times = 0; times < 3; ++times) { // it has stopped, and its answer tells no more than where
        clock.Observe(stopped, At(now));
        ask();
    }
    EXPECT_LT(clock.Read(At(now + 60.0)), stopped + 1.2);
    clock.Observe(stopped + 1.3, At(now)); // it has come on again
    ExpectAt(now + 0.1, stopped + 1.4);
}

} // namespace kirolane::tests
