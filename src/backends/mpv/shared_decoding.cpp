#include "backends/mpv/shared_decoding.h"

#include "backends/mpv/player.h"

#include <cmath>

namespace kirolane::mpv {

namespace {

/// Seconds between the places where orders have sent them up to which they begin to share, about one picture.
constexpr double kTogether = 0.04;
/// And those from which they share no more.
constexpr double kApart = 0.1;

double Distance(const Player& stage, const Player& preview, TimePoint now) {
    return std::abs(stage.AimAt(now) - preview.AimAt(now));
}

bool Alike(const Player& stage, const Player& preview) {
    return stage.WantsToRun() == preview.WantsToRun() &&
           (!stage.WantsToRun() || stage.Rate() == preview.Rate());
}

} // namespace

void ShareDecoding(Player& stage, Player& preview, TimePoint now) {
    using enum Player::Phase;
    const bool open = stage.GetPhase() == Open && preview.GetPhase() == Open;
    if (preview.RestsAt(stage)) {
        if (open && (!Alike(stage, preview) || Distance(stage, preview, now) > kApart))
            preview.Wake(preview.AimAt(now), now);
    } else if (open && stage.File() == preview.File() && Alike(stage, preview) && !stage.UnderWay() &&
               !preview.UnderWay() && Distance(stage, preview, now) <= kTogether) {
        preview.RestAt(stage, now);
    }
}

bool StandsThere(const Player& stage, const MediaFile& file, const LoadRequest& request) {
    const TimePoint now = Clock::now();
    return stage.GetPhase() == Player::Phase::Open && !stage.Free() && stage.File() == file &&
           !stage.WantsToRun() &&
           (std::abs(stage.AimAt(now) - request.from) <= kTogether ||
            stage.PictureAt(now) == request.picture);
}

} // namespace kirolane::mpv
