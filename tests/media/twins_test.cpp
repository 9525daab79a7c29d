// Twins that start together stay at the distance at which they were started.

#include "engine_test.h"

namespace kirolane::tests {

class Twins : public EngineTest {
protected:
    void Start(double preview, double stage, double rate) {
        const EngineOrder orders[] = {{&Preview(), {.running = true, .seekTo = preview, .rate = rate}},
                                      {&Stage(), {.running = true, .seekTo = stage, .rate = rate}}};
        Media().Apply(orders);
    }
    double Distance() { return Stage().Position() - Preview().Position(); }
    bool PlaysTo(double seconds) {
        return WaitUntil([&] { return Stage().Position() >= seconds; });
    }
};

TEST_F(Twins, TheDistanceOfAStartStays) {
    ASSERT_TRUE(Preview().Load(ClipPath("clip.mp4")) && Stage().Load(ClipPath("clip.mp4")));
    struct Case {
        double preview, stage, rate;
    };
    for (const Case& c : {Case{0.0, 0.0, 1.0}, Case{0.2, 0.0, 1.0}, Case{0.0, 0.12, 1.25}}) {
        Start(c.preview, c.stage, c.rate);
        ASSERT_TRUE(PlaysTo(2.0));
        EXPECT_NEAR(Distance(), c.stage - c.preview, c.rate == 1.0 ? 0.01 : 0.04) << "after a start";
        OrderTwins({.running = false, .seekTo = {}, .rate = c.rate});
        const double halted = Distance();
        OrderTwins({.running = true, .seekTo = {}, .rate = c.rate});
        ASSERT_TRUE(PlaysTo(3.2));
        EXPECT_NEAR(Distance(), halted, c.rate == 1.0 ? 0.01 : 0.04) << "after a pause";
    }
}

} // namespace kirolane::tests
