#pragma once

#include "backends/mpv/play_clock.h"

namespace kirolane::mpv {

struct MediaFile;
class Player;

/// While twins play one file in step, all that one of them would do is what the other does: the silent one
/// rests at the audience's, which alone is decoded, and wakes as soon as an order takes them apart. To be
/// called after each order and each message. The conductor's, under its lock.
void ShareDecoding(Player& stage, Player& preview, TimePoint now);

/// Whoever opens that file, too, can rest there from its first moment.
bool StandsAtBeginning(const Player& stage, const MediaFile& file);

} // namespace kirolane::mpv
