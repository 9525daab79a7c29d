#pragma once

#include "contract/backend/framesource.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kirolane {

/// What a player wants at the end of a handler: its whole wanted state, plus what is to be done once.
struct PlayerOrder {
    bool unload = false;          ///< empty the player; the rest is then without meaning but for rate, volume
    bool running = false;         ///< a player at its end stays there until a seek
    std::optional<double> seekTo; ///< seconds, within 0 and Duration
    double rate = 1.0;
    std::int32_t volume = 256; ///< linear, 256 is unity
};

/// A point of the time that players play in.
using Instant = std::chrono::steady_clock::time_point;

/// The engine behind one MoviePlayer. All calls come on the main thread and none but Load waits.
class PlayerEngine {
public:
    virtual ~PlayerEngine() = default;

    /// Opens the regular file at that absolute path, replacing what is loaded, and halts it at 0 with its
    /// Duration known. False if it cannot be played, which leaves the engine empty. Waits for the answer, at
    /// most 5 s for all loads of one handler together. What was shown stays until the first new frame.
    virtual bool Load(const std::string& nativePath) = 0;

    /// What is loaded is not wanted any more; a Load or the order to unload it follows in the same handler.
    /// An engine may make use of the time until then.
    virtual void Release() {}

    /// Seconds, above 0 since a successful Load and fixed.
    [[nodiscard]] virtual double Duration() const = 0;
    /// Seconds, smooth between frames while running. From an order with a seek until the engine plays from
    /// there: the target. May be called at any time; never blocks.
    [[nodiscard]] virtual double Position() const = 0;
    /// Position as of that instant, now or shortly before; Duration once AtEnd.
    [[nodiscard]] virtual double PositionAsOf(Instant /*at*/) const {
        return AtEnd() ? Duration() : Position();
    }
    /// The data has run out, and no seek has been ordered since.
    [[nodiscard]] virtual bool AtEnd() const = 0;

    /// Where the pictures come from, null for an engine without any.
    [[nodiscard]] virtual FrameSource* Frames() = 0;
};

struct EngineOrder {
    PlayerEngine* engine = nullptr;
    PlayerOrder order;
};

class MediaEngine {
public:
    virtual ~MediaEngine() = default;

    /// `path` is the player's own, as in "MonitorForm.QTM"; the back end was told at its making which roles
    /// the players have. Never null.
    virtual std::unique_ptr<PlayerEngine> MakePlayer(std::string_view path) = 0;
    /// Called once, when the first windows have been shown: the engine may make ready in the background what
    /// the first loads will need.
    virtual void Prepare() {}
    /// By the clock that players play by.
    [[nodiscard]] virtual Instant Now() const { return std::chrono::steady_clock::now(); }
    /// The orders of one handler, in the order given: players that start here start together.
    virtual void Apply(std::span<const EngineOrder> orders) = 0;
};

} // namespace kirolane
