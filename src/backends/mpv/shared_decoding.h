#pragma once

#include "backends/mpv/media_file.h"
#include "backends/mpv/play_clock.h"

namespace kirolane::mpv {

class Player;
struct LoadRequest;

/// While twins play one file in step, all that one of them would do is what the other does: the silent one
/// rests at the audience's, which alone is decoded, and wakes as soon as an order takes them apart. To be
/// called after each order and each message. The conductor's, under its lock.
void ShareDecoding(Player& stage, Player& preview, TimePoint now);

/// Whoever opens that file, too, to stand as is asked, can rest there from its first moment.
bool StandsThere(const Player& stage, const MediaFile& file, const LoadRequest& request);

} // namespace kirolane::mpv
