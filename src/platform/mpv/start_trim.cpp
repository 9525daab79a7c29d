#include "platform/mpv/start_trim.h"

#include "platform/mpv/player.h"

#include <algorithm>
#include <cmath>

namespace kirolane::mpv {

namespace {
using std::chrono::milliseconds;

/// From the start to the first look, and from one look to the next.
constexpr milliseconds kLook{300};
/// How long a nudge lasts, as long as it stays within the greatest.
constexpr double kNudgeSeconds = 0.3;
constexpr double kGreatestNudge = 0.05;
constexpr int kNudges = 3;
/// Seconds of distance that need no nudge, and those that no start explains.
constexpr double kEnough = 0.0004;
constexpr double kTooFar = 0.25;
/// A movie of few frames a second tells its position seldom.
constexpr std::chrono::seconds kPatience{4};
} // namespace

void StartTrim::Begin(const Player& stage, Player& preview, TimePoint now) {
    End(now);
    if (stage.Rate() != 1.0 || preview.Rate() != 1.0)
        return;
    m_stage = &stage;
    m_preview = &preview;
    m_distance = stage.PositionAt(now) - preview.PositionAt(now);
    m_nudges = 0;
    m_next = now + kLook;
    m_limit = now + kPatience;
}

void StartTrim::Advance(TimePoint now) {
    if (m_stage == nullptr)
        return;
    if (!m_stage->Plays() || !m_preview->Plays() || m_stage->Rate() != 1.0 || m_preview->Rate() != 1.0)
        End(now);
    else if (m_next <= now || CanShift())
        Look(now);
}

bool StartTrim::CanShift() const {
    return m_nudges == 0 && m_preview->RestsFromPictures() && m_stage->PositionSettled();
}

void StartTrim::Look(TimePoint now) {
    m_next = now + kLook;
    if (m_nudging) {
        m_nudging = false;
        m_preview->Nudge(1.0, now);
        if (m_nudges == kNudges)
            End(now);
        return;
    }
    if (!m_stage->PositionSettled() || !m_preview->PositionSettled()) {
        if (m_limit <= now)
            End(now);
        return;
    }
    const double error = m_stage->PositionAt(now) - m_preview->PositionAt(now) - m_distance;
    if (std::abs(error) < kEnough || std::abs(error) > kTooFar) {
        End(now);
        return;
    }
    if (m_preview->RestsFromPictures()) { // nothing is seen or heard of it
        m_preview->Shift(error);
        if (++m_nudges == kNudges)
            End(now);
        return;
    }
    const double nudge = std::clamp(error / kNudgeSeconds, -kGreatestNudge, kGreatestNudge);
    const std::chrono::duration<double> lasting(error / nudge);
    m_next = now + std::chrono::duration_cast<Clock::duration>(lasting);
    m_nudging = true;
    ++m_nudges;
    m_preview->Nudge(1.0 + nudge, now);
}

void StartTrim::End(TimePoint now) {
    if (m_nudging)
        m_preview->Nudge(1.0, now);
    m_nudging = false;
    m_stage = nullptr;
    m_preview = nullptr;
}

std::optional<TimePoint> StartTrim::Deadline() const {
    return m_stage == nullptr ? std::nullopt : std::optional(m_next);
}

void StartTrim::Leave(const Player& player) {
    if (m_stage == &player || m_preview == &player)
        End(Clock::now());
}

} // namespace kirolane::mpv
