// The position between libmpv's reports.

#include "platform/mpv/play_clock.h"

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
    clock.Start(At(6.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(7.0)), 11.0);
    clock.SetRate(0.5, At(7.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(9.0)), 12.0);
    clock.Halt(At(9.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(20.0)), 12.0);
    clock.Start(At(30.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(32.0)), 13.0);
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
    clock.Observe(3.0, At(1.0));
    EXPECT_DOUBLE_EQ(clock.Read(At(1.0)), 3.0);
    clock.Observe(2.0, At(1.5)); // back: the reading waits for it
    EXPECT_DOUBLE_EQ(clock.Read(At(1.6)), 3.0);
    EXPECT_DOUBLE_EQ(clock.Read(At(3.0)), 3.5);
}

TEST(PlayClock, TheFirstReportsOfAStartTellNothing) {
    mpv::PlayClock clock;
    clock.Set(0.0);
    clock.Start(At(0.0));
    for (int frame = 1; frame <= 12; ++frame) { // sound begins a picture late, and takes the pictures with it
        const double now = frame / 25.0;
        clock.Observe(frame <= 3 ? now : now - 0.04, At(now));
    }
    EXPECT_TRUE(clock.Settled());
    EXPECT_NEAR(clock.Read(At(2.0)), 2.0 - 0.04, 1e-6);
}

TEST(PlayClock, ReportsThatAreOffTellWhatChangesAfterTheStart) {
    mpv::PlayClock clock;
    clock.Set(1.0);
    clock.SetReportsOff(true);
    clock.Start(At(0.0));
    const auto play = [&](double from, double off) {
        for (int report = 1; report <= 40; ++report)
            clock.Observe(1.0 + from + report / 20.0 - off, At(from + report / 20.0));
    };
    play(0.0, 0.03);
    EXPECT_NEAR(clock.Read(At(2.0)), 3.0, 1e-6) << "it goes by the start";
    clock.Shift(-0.02);
    EXPECT_NEAR(clock.Read(At(2.001)), 3.0, 1e-6) << "never backwards";
    play(2.0, 0.03);
    EXPECT_NEAR(clock.Read(At(4.0)), 4.98, 1e-6) << "the shift stays";
    clock.Observe(9.0, At(4.02));
    EXPECT_NEAR(clock.Read(At(4.02)), 5.0, 1e-6) << "over a gap of the sound";
    play(4.1, 0.13);
    EXPECT_NEAR(clock.Read(At(6.1)), 6.98, 0.01) << "it has waited for data";
}

} // namespace kirolane::tests
