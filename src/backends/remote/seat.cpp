#include "backends/remote/seat.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kirolane::remote {

void Seat::Empty() {
    medium.reset();
    duration = 0.0;
    ended = false;
    running = false;
    goesTo.reset();
    returns = false;
    standing.reset();
    standsUntil = 0;
    m_lastRead = 0.0;
    m_lastMotion = {};
}

void Seat::TakeOrder(const PlayerOrder& wanted, TimePoint now) {
    if (standing && standing->motion.rate > 0.0 && medium != nullptr)
        GoOn(wanted.running ? wanted.rate : 0.0, now);
    rate = wanted.rate;
    volume = wanted.volume;
    if (wanted.unload) {
        Empty();
        return;
    }
    if (medium == nullptr)
        return;
    running = wanted.running;
    if (!wanted.seekTo || ended)
        return;
    goesTo = wanted.seekTo;
    m_lastRead = *goesTo;
}

void Seat::Stand(const wire::Board* board, unsigned index, TimePoint now) {
    if (medium == nullptr || ended)
        return;
    const std::uint32_t flags = Flags(board, index);
    wire::Motion motion = Motion(board, index);
    if (!running || goesTo || !(motion.rate > 0.0)) {
        const bool stands = !running && !goesTo && std::isfinite(motion.picture);
        motion.position = Position(board, index, now);
        motion.picture = stands ? std::clamp(motion.picture, 0.0, duration) : motion.position;
        motion.rate = 0.0;
    } // else what passes counts, also while it hung
    motion.until = std::numeric_limits<std::int64_t>::max();
    standing = Standing{motion, flags};
    standsUntil = 0;
    returns = false;
}

void Seat::GoOn(double pace, TimePoint now) {
    wire::Motion& motion = standing->motion;
    motion.position = motion.picture = Position(nullptr, 0, now);
    motion.asOf = std::chrono::duration_cast<std::chrono::nanoseconds>(now.time_since_epoch()).count();
    motion.rate = pace;
}

void Seat::LookForReturn(const wire::Board* board, unsigned index) {
    if (!standing || ended || standsUntil == 0 || board == nullptr)
        return;
    wire::Motion motion;
    const std::uint32_t flags = board->Flags(index);
    const bool pictures = (flags & wire::kHasPicture) == 0 || (flags & wire::kHasFrame) != 0;
    if (pictures && board->GetMotion(index, motion) && motion.order >= standsUntil) {
        standing.reset();
        returned = true;
    }
}

wire::Motion Seat::Motion(const wire::Board* board, unsigned index) {
    LookForReturn(board, index);
    if (standing)
        return standing->motion;
    wire::Motion motion;
    if (board == nullptr || !board->GetMotion(index, motion) || !std::isfinite(motion.position) ||
        !std::isfinite(motion.rate))
        return m_lastMotion;
    if (motion.order >= order)
        goesTo.reset();
    m_lastMotion = motion;
    return motion;
}

double Seat::Position(const wire::Board* board, unsigned index, TimePoint at) {
    if (medium == nullptr)
        return 0.0;
    if (ended)
        return duration;
    const wire::Motion motion = Motion(board, index);
    if (goesTo)
        return *goesTo;
    if (motion.atEnd != 0)
        return duration;
    m_lastRead = std::clamp(std::max(m_lastRead, motion.At(at)), 0.0, duration);
    return m_lastRead;
}

bool Seat::AtEnd(const wire::Board* board, unsigned index) {
    if (medium == nullptr || ended)
        return ended;
    return Motion(board, index).atEnd != 0 && !goesTo;
}

std::uint32_t Seat::Flags(const wire::Board* board, unsigned index) {
    if (medium == nullptr)
        return 0;
    LookForReturn(board, index);
    if (standing)
        return standing->flags;
    return board != nullptr ? board->Flags(index) : 0;
}

} // namespace kirolane::remote
