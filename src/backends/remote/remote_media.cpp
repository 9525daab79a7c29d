#include "backends/remote/remote_media.h"

#include "backends/remote/remote_player.h"
#include "backends/remote/supervisor.h"
#include "contract/backend/host.h"
#include "wire/sound_font.h"

#include <vector>

namespace kirolane::remote {

RemoteMedia::RemoteMedia(RemoteOptions options)
    : m_soundFont(options.soundFont), m_supervisor(std::make_shared<Supervisor>(std::move(options))) {}

RemoteMedia::~RemoteMedia() = default;

std::unique_ptr<PlayerEngine> RemoteMedia::MakePlayer(std::string_view path) {
    return std::make_unique<RemotePlayer>(m_supervisor, path);
}

void RemoteMedia::Prepare() {
    // Here and not in the engines, which come and go: it is said once.
    if (wire::FindSoundFont(m_soundFont).empty())
        WriteErrorLine("start: no SoundFont is installed; MIDI files will not play");
    m_supervisor->Prepare();
}

void RemoteMedia::Apply(std::span<const EngineOrder> orders) {
    std::vector<Supervisor::SeatOrder> list;
    for (const EngineOrder& order : orders)
        list.push_back({static_cast<RemotePlayer&>(*order.engine).GetPlace(), order.order});
    m_supervisor->Apply(list);
}

} // namespace kirolane::remote
