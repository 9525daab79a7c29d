#include "platform/mpv/shared_decoding.h"

#include "platform/mpv/player.h"

#include <cmath>

namespace kirolane::mpv {

namespace {

/// Seconds between the places where they stand up to which they begin to share, about one picture.
constexpr double kTogether = 0.04;
/// Seconds between the places that orders send them to from which they share no more. Distance that grows
/// without an order is no reason: the operator then goes on seeing what the audience sees.
constexpr double kApart = 0.1;

double Distance(const Player& stage, const Player& preview, TimePoint now) {
    return std::abs(stage.AimAt(now) - preview.AimAt(now));
}

bool OneMovie(const Player& stage, const Player& preview) {
    using enum Player::Phase;
    if (stage.GetPhase() == Empty || preview.GetPhase() == Empty || stage.File() != preview.File())
        return false;
    return stage.GetPhase() == Opening || preview.GetPhase() == Opening ||
           stage.WantsToRun() == preview.WantsToRun();
}

bool SentApart(const Player& stage, const Player& preview, TimePoint now) {
    return (!stage.Ready() || !preview.Ready()) && Distance(stage, preview, now) > kApart;
}

bool StandTogether(const Player& stage, const Player& preview, TimePoint now) {
    return stage.Stands() && preview.Stands() && Distance(stage, preview, now) <= kTogether;
}

} // namespace

void ShareDecoding(Player& stage, Player& preview, TimePoint now) {
    const bool together = OneMovie(stage, preview) && !SentApart(stage, preview, now);
    if (preview.RestsFromPictures()) {
        if (!together)
            preview.ShowOwnPictures(now);
        else if (stage.AtEndAt(now))
            preview.EndWithTwin();
    } else if (together && StandTogether(stage, preview, now) && preview.HasSound() &&
               stage.Pictures().HasPicture()) {
        preview.RestFromPictures(stage.Pictures());
    }
}

} // namespace kirolane::mpv
