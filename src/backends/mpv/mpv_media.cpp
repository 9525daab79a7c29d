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

MpvMedia::MpvMedia(MpvOptions options) {
    QuietLibraries();
    LimitMemoryRegions();
    av_max_alloc(kLargestBlock);
    std::setlocale(LC_NUMERIC, "C"); // NOLINT(concurrency-mt-unsafe): at the start of the process
    m_conductor = std::make_shared<Conductor>(std::move(options));
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

} // namespace kirolane::mpv
