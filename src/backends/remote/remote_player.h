#pragma once

#include "backends/remote/supervisor.h"
#include "contract/backend/mediaengine.h"

#include <memory>
#include <string>
#include <string_view>

namespace kirolane::remote {

/// A player whose file plays in an engine.
class RemotePlayer : public PlayerEngine {
public:
    RemotePlayer(std::shared_ptr<Supervisor> supervisor, std::string_view path)
        : m_supervisor(std::move(supervisor)), m_place(m_supervisor->Add(path)) {}
    ~RemotePlayer() override { m_supervisor->Remove(m_place); }
    RemotePlayer(const RemotePlayer&) = delete;
    RemotePlayer& operator=(const RemotePlayer&) = delete;

    [[nodiscard]] const Place& GetPlace() const { return m_place; }

    // PlayerEngine.
    bool Load(const std::string& nativePath) override { return m_supervisor->Load(m_place, nativePath); }
    void Release() override { m_supervisor->Release(m_place); }
    [[nodiscard]] double Duration() const override { return m_supervisor->Duration(m_place); }
    [[nodiscard]] double Position() const override { return PositionAsOf(Clock::now()); }
    [[nodiscard]] double PositionAsOf(Instant at) const override {
        return m_supervisor->Position(m_place, at);
    }
    [[nodiscard]] bool AtEnd() const override { return m_supervisor->AtEnd(m_place); }
    [[nodiscard]] FrameSource* Frames() override { return m_place.seat->frames.get(); }

private:
    const std::shared_ptr<Supervisor> m_supervisor;
    const Place m_place;
};

} // namespace kirolane::remote
