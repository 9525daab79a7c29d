#pragma once

#include "contract/backend/mediaengine.h"
#include "wire/engine_options.h"

#include <memory>
#include <string>
#include <string_view>

namespace kirolane::remote {

struct RemoteOptions : wire::EngineOptions {
    /// The engine's program; "" is kirolane-engine beside the running one.
    std::string program = {};
};

class Supervisor;

/// The media back end whose engines are processes of their own: one for the movie's twins, one for the
/// sound's player from its first file on, and a spare. An engine that ends or hangs is replaced, and what it
/// played goes on in another; docs/processes.md has it all.
class RemoteMedia : public MediaEngine {
public:
    explicit RemoteMedia(RemoteOptions options);
    ~RemoteMedia() override;
    RemoteMedia(const RemoteMedia&) = delete;
    RemoteMedia& operator=(const RemoteMedia&) = delete;

    std::unique_ptr<PlayerEngine> MakePlayer(std::string_view path) override;
    /// Starts the engines, which takes a tenth of a second each.
    void Prepare() override;
    void Apply(std::span<const EngineOrder> orders) override;

private:
    const std::string m_soundFont;
    std::shared_ptr<Supervisor> m_supervisor;
};

} // namespace kirolane::remote
