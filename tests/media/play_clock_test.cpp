// The position between libmpv's reports.

#include "backends/mpv/play_clock.h"

#include <gtest/gtest.h>

namespace kirolane::tests {

namespace {
mpv::TimePoint At(double seconds) {
    return mpv::TimePoint(
        std::chrono::duration_cast<mpv::Clock::duration>(std::chrono::duration<double>(seconds)));
}
} // namespace

TEST(PlayClock, RunsAtItsRateBetweenReportsAndStandsOtherwise) {
    mpv::PlayClock clock;
    clock.Set(10.0);
    EXPECT_DOUBLE_EQ(clock.Read(At(5.0)), 10.0);
    clock.Observe(50.0, At(5.0)); // halted: what is left of the movie before
    EXPECT_DOUBLE_EQ(clock.Read(At(5.0)), 10.0);
    EXPECT_FALSE(clock.Doubtful());
    clock.Start(At(6.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(6.2)), 10.2);
    clock.SetRate(0.5, At(6.2));
    EXPECT_DOUBLE_EQ(clock.Read(At(6.3)), 10.25);
    clock.Halt(At(6.3));
    EXPECT_DOUBLE_EQ(clock.Read(At(20.0)), 10.25);
    clock.Start(At(30.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(30.2)), 10.35);
}

TEST(PlayClock, ReportsPullItWithoutAJoltAndNeverBackwards) {
    mpv::PlayClock clock;
    clock.Set(0.0);
    clock.Start(At(0.0));
    double last = 0.0;
    double largest = 0.0;
    for (int frame = 1; frame <= 60; ++frame) { // the movie runs 40 ms behind the clock, with 5 ms of jitter
        const double now = frame / 25.0;
        const double read = clock.Read(At(now));
        EXPECT_GE(read, last);
        largest = std::max(largest, read - last);
        last = read;
        clock.Observe(now - 0.04 + (frame % 2 == 0 ? 0.005 : -0.005), At(now));
    }
    EXPECT_NEAR(last, 60 / 25.0 - 0.04, 0.01) << "it has come to the movie";
    EXPECT_LT(largest, 0.05) << "a step of a frame";
}

TEST(PlayClock, AReportFarOffIsTakenAsItIs) {
    mpv::PlayClock clock;
    clock.Set(0.0);
    clock.Start(At(0.0));
    clock.Observe(3.0, At(0.1));
    EXPECT_DOUBLE_EQ(clock.Read(At(0.1)), 3.0);
    clock.Observe(2.0, At(0.15)); // back: the reading waits for it
    clock.Observe(2.9, At(0.16));
    EXPECT_DOUBLE_EQ(clock.Read(At(0.25)), 3.0);
    EXPECT_DOUBLE_EQ(clock.Read(At(0.36)), 3.1);
}

TEST(PlayClock, TheFirstReportsOfAStartTellNothing) {
    mpv::PlayClock clock;
    clock.Set(0.0);
    clock.Start(At(0.0));
    for (int frame = 1; frame <= 12; ++frame) { // sound begins a picture late, and takes the pictures with it
        const double now = frame / 25.0;
        clock.Observe(frame <= 3 ? now : now - 0.04, At(now));
    }
    EXPECT_NEAR(clock.Read(At(0.5)), 0.5 - 0.04, 1e-6);
}

TEST(PlayClock, WhereReportsCeaseItIsAskedAndStandsWithoutAnAnswerThatTellsMore) {
    mpv::PlayClock clock;
    clock.Set(0.0);
    clock.Start(At(0.0));
    double now = 0.0;
    const auto ask = [&] { // the moment at which it is asked
        now = mpv::TimePoint(*clock.Doubtful()).time_since_epoch() / std::chrono::duration<double>(1.0);
        clock.Ask(At(now));
        return now;
    };
    for (int pictures = 0; pictures < 2; ++pictures) { // far between, under sound
        EXPECT_LT(ask(), 1.3);
        clock.Observe(now, At(now));
        EXPECT_NEAR(clock.Read(At(now + 0.9)), now + 0.9, 1e-6);
    }
    ask(); // and under none
    clock.Trust(At(now));
    EXPECT_NEAR(clock.Read(At(now + 0.9)), now + 0.9, 1e-6);
    const double stopped = ask() - 0.9;
    for (int times = 0; times < 3; ++times) { // it has stopped, and its answer tells no more than where
        clock.Observe(stopped, At(now));
        ask();
    }
    EXPECT_LT(clock.Read(At(now + 60.0)), stopped + 1.2);
    clock.Observe(stopped + 1.3, At(now)); // it has come on again
    EXPECT_NEAR(clock.Read(At(now + 0.1)), stopped + 1.4, 1e-6);
}

} // namespace kirolane::tests
