// The players on libmpv.

#include "mpv_harness.h"
#include "support/player_suite.h"

namespace kirolane::tests {

namespace {
std::unique_ptr<PlayerHarness> MakeMpv() {
    return std::make_unique<MpvHarness>();
}
} // namespace

INSTANTIATE_TEST_SUITE_P(Mpv, PlayerSuite, ::testing::Values(MakeMpv));

} // namespace kirolane::tests
