#include "contract/core/player_orders.h"

#include "contract/backend/mediaengine.h"
#include "contract/movieplayer.h"

#include <utility>

namespace kirolane {

void PlayerOrders::Mark(MoviePlayer& player) {
    m_players.push_back(&player);
}

void PlayerOrders::Forget(const MoviePlayer& player) {
    std::erase(m_players, &player);
}

void PlayerOrders::Flush(MediaEngine& media) {
    if (m_players.empty())
        return;
    std::vector<EngineOrder> orders;
    orders.reserve(m_players.size());
    for (MoviePlayer* player : std::exchange(m_players, {}))
        if (const PlayerOrder order = player->TakeOrder(); player->Engine() != nullptr)
            orders.push_back({player->Engine(), order});
    media.Apply(orders);
}

} // namespace kirolane
