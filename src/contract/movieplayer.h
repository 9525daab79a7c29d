#pragma once

#include "contract/movie.h"
#include "contract/rectcontrol.h"
#include "contract/ref.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace kirolane {

class PlayerEngine;
struct PlayerOrder;

/// Plays one movie at a time. The object holds what is wanted; the engine behind it is told once when the
/// running handler ends, all players of a handler together. Reads answer from what is wanted and never block.
class MoviePlayer : public RectControl {
public:
    static constexpr std::int32_t kFullVolume = 256;

    MoviePlayer(class Window& window, const ControlDesign& design);
    ~MoviePlayer() override;

    [[nodiscard]] const Ref<class Movie>& Movie() const { return m_movie; }
    /// Loads without playing, nil empties. Leaves the player stopped at 0, drops a pending seek, fires
    /// neither Play nor Stop. A file that cannot be opened leaves Movie nil; the last picture stays until the
    /// handler ends, so that one movie can follow another without a gap.
    void SetMovie(const Ref<class Movie>& movie);

    /// Starts at Position. If that changes the state, fires Play before it returns. Nothing on an empty
    /// player.
    void Play();
    /// Halts at Position. If that changes the state, fires Stop before it returns. Nothing on an empty
    /// player.
    void Stop();
    /// A movie that has run out still counts as running and fires no event.
    [[nodiscard]] bool Running() const { return m_running; }

    /// Seconds from the start, 0 on an empty player, never above Duration. A stopped player reads exactly
    /// what was written or what it last read at the stop; a running one never goes backwards but for a write,
    /// and reads exactly Duration once its data has run out. Within one handler, until it yields or loads,
    /// all readings of running players are those of one instant.
    [[nodiscard]] double Position() const;
    /// Clamped to 0 and Duration (0 if it is no number); reads back at once. A running player goes on from
    /// there, also one that had run out. Nothing on an empty player.
    void SetPosition(double seconds);
    /// Seconds, fixed at the open and above 0; 0 on an empty player.
    [[nodiscard]] double Duration() const;

    /// Linear in amplitude, 0 silent to 256 unity, 256 at first. Clamped; held on an empty player.
    [[nodiscard]] std::int32_t Volume() const { return m_volume; }
    void SetVolume(std::int32_t volume);
    /// Speed factor with the pitch kept, 1.0 at first; held on an empty player. Never starts a stopped one. A
    /// factor that is not above 0 changes nothing.
    void SetRate(double rate);
    [[nodiscard]] double Rate() const { return m_rate; }

    std::function<void()> OnPlay;
    std::function<void()> OnStop;

    /// The engine, null in a runtime without one; for the back end that shows the picture. The picture fills
    /// the player's rectangle less its lowest kHiddenStrip units.
    [[nodiscard]] PlayerEngine* Engine() const { return m_engine.get(); }
    static constexpr std::int32_t kHiddenStrip = 16;

    /// For the runtime: what the engine is to be told, which counts as told then.
    PlayerOrder TakeOrder();

private:
    void Order();

    std::unique_ptr<PlayerEngine> m_engine;
    Ref<class Movie> m_movie;
    bool m_running = false;
    double m_rate = 1.0;
    std::int32_t m_volume = kFullVolume;
    double m_position = 0.0;         ///< of a stopped player, or written and not yet ordered
    std::optional<double> m_seekTo;  ///< written since the last order
    bool m_ordered = false;          ///< waits in the runtime's list of orders
    bool m_loaded = false;           ///< the engine holds a file, wanted or not
    mutable double m_lastRead = 0.0; ///< of a running player: what keeps readings from going backwards
    mutable std::chrono::steady_clock::time_point m_readAsOf{}; ///< and as of when it was read
};

} // namespace kirolane
