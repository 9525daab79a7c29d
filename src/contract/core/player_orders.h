#pragma once

#include <vector>

namespace kirolane {

class MediaEngine;
class MoviePlayer;

/// The players that the running handler has given orders.
class PlayerOrders {
public:
    void Mark(MoviePlayer& player);
    void Forget(const MoviePlayer& player);
    /// Gives them to the engine, all in one call, so that twins that start together start together.
    void Flush(MediaEngine& media);

private:
    std::vector<MoviePlayer*> m_players;
};

} // namespace kirolane
