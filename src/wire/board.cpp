#include "wire/board.h"

#include <algorithm>
#include <bit>

namespace kirolane::wire {

namespace {
constexpr int kMostTries = 1000; ///< a writer takes a few nanoseconds
}

double Motion::At(std::chrono::steady_clock::time_point time) const {
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
    const std::int64_t end = std::min(static_cast<std::int64_t>(now), until);
    const double passed = static_cast<double>(end) - static_cast<double>(asOf); // of any numbers
    return passed > 0.0 ? position + passed * 1e-9 * rate : position;
}

void Board::SetMotion(unsigned player, const Motion& motion) {
    PlayerState& state = State(player);
    const auto words = std::bit_cast<std::array<std::uint64_t, kWords>>(motion);
    const std::uint32_t sequence = state.sequence.load(std::memory_order_relaxed);
    state.sequence.store(sequence + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release);
    for (std::size_t i = 0; i < kWords; ++i)
        state.motion[i].store(words[i], std::memory_order_relaxed);
    state.sequence.store(sequence + 2, std::memory_order_release);
}

bool Board::GetMotion(unsigned player, Motion& motion) const {
    const PlayerState& state = State(player);
    std::array<std::uint64_t, kWords> words{};
    for (int i = 0; i < kMostTries; ++i) {
        const std::uint32_t before = state.sequence.load(std::memory_order_acquire);
        for (std::size_t word = 0; word < kWords; ++word)
            words[word] = state.motion[word].load(std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_acquire);
        if (before % 2 != 0 || state.sequence.load(std::memory_order_relaxed) != before)
            continue;
        motion = std::bit_cast<Motion>(words);
        return true;
    }
    return false;
}

} // namespace kirolane::wire
