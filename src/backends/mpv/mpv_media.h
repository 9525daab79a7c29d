#pragma once

#include "contract/backend/mediaengine.h"
#include "wire/board.h"
#include "wire/engine_options.h"
#include "wire/medium.h"
#include "wire/surface.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kirolane::mpv {

using wire::PlayerRole;
using wire::Role;
using MpvOptions = wire::EngineOptions;

/// A file to be opened, and how.
struct LoadRequest {
    std::string path;
    std::shared_ptr<const wire::Medium> medium = nullptr; ///< null: it is still to be opened
    double from = 0.0;                                    ///< seconds at which it is to stand
    double picture = from;                                ///< and of the picture that it is to show there
    /// For all loads of one handler, of which this may be the first.
    std::optional<std::chrono::milliseconds> limit = {};
};

class Conductor;

/// The media back end on libmpv, one warm player for each role. Make it after the application object (which
/// sets the locale, of which libmpv needs the C numbers) and before the first thread that prints or reads
/// numbers.
class MpvMedia : public MediaEngine {
public:
    /// `onTurn` is called on a thread of the engine's after whatever may have moved a player; must not wait
    /// long.
    explicit MpvMedia(MpvOptions options, std::function<void()> onTurn = {});
    ~MpvMedia() override;
    MpvMedia(const MpvMedia&) = delete;
    MpvMedia& operator=(const MpvMedia&) = delete;

    /// A libmpv that does not start fails the loads.
    std::unique_ptr<PlayerEngine> MakePlayer(std::string_view path) override;
    void Prepare() override;
    void Apply(std::span<const EngineOrder> orders) override;

    // For whoever shows the players in another process. Of players of this one's making.

    static bool Load(PlayerEngine& player, const LoadRequest& request);
    /// Any thread.
    static wire::Motion MotionOf(const PlayerEngine& player);
    /// The pictures to come go there, in its size; null for nowhere. In place of Frames().SetSize.
    static void SetSurface(PlayerEngine& player, std::shared_ptr<wire::SurfaceWriter> surface);

private:
    std::shared_ptr<Conductor> m_conductor;
};

} // namespace kirolane::mpv
