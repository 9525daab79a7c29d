#pragma once

#include "platform/mpv/play_clock.h"

namespace kirolane::mpv {

class Player;

/// While twins play one file in step, the pictures of one would be those of the other: the audience's player
/// decodes them for both, and the silent one goes on with its sound and its own position. It decodes again
/// as soon as an order takes them apart. To be called after each order and each message. The conductor's,
/// under its lock.
void ShareDecoding(Player& stage, Player& preview, TimePoint now);

} // namespace kirolane::mpv
