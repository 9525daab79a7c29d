#include "backends/mpv/mpv_media.h"

#include "backends/mpv/conductor.h"
#include "backends/mpv/memory.h"
#include "backends/mpv/quiet_libraries.h"

extern "C" {
#include <libavutil/mem.h>
}

#include <algorithm>
#include <clocale>

namespace kirolane::mpv {

namespace {
/// Of libavformat and libavcodec, in bytes: beyond what any picture that can be shown needs in one block. A
/// forged size is then refused where formats are looked into, too.
constexpr std::size_t kLargestBlock = 192U << 20;
} // namespace

MpvMedia::MpvMedia(MpvOptions options, std::function<void()> onTurn) {
    QuietLibraries();
    LimitMemoryRegions();
    av_max_alloc(kLargestBlock);
    std::setlocale(LC_NUMERIC, "C"); // NOLINT(concurrency-mt-unsafe): at the start of the process
    m_conductor = std::make_shared<Conductor>(std::move(options), std::move(onTurn));
}

MpvMedia::~MpvMedia() = default;

std::unique_ptr<PlayerEngine> MpvMedia::MakePlayer(std::string_view path) {
    const auto& roles = m_conductor->Options().roles;
    const auto it = std::find_if(roles.begin(), roles.end(),
                                 [path](const PlayerRole& role) { return role.path == path; });
    const PlayerRole role =
        it != roles.end() ? *it : PlayerRole{std::string(path), Role::Stage, std::string(path)};
    return std::make_unique<Player>(m_conductor, role);
}

void MpvMedia::Prepare() {
    m_conductor->Prepare();
}

void MpvMedia::Apply(std::span<const EngineOrder> orders) {
    m_conductor->Apply(orders);
}

bool MpvMedia::Load(PlayerEngine& player, const LoadRequest& request) {
    return static_cast<Player&>(player).Load(request);
}

wire::Motion MpvMedia::MotionOf(const PlayerEngine& player) {
    return static_cast<const Player&>(player).GetMotion();
}

void MpvMedia::SetSurface(PlayerEngine& player, std::shared_ptr<wire::SurfaceWriter> surface) {
    static_cast<Player&>(player).Pictures().SetSurface(std::move(surface));
}

} // namespace kirolane::mpv
