#pragma once

#include "contract/backend/framesource.h"
#include "wire/board.h"
#include "wire/surface.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

namespace kirolane::remote {

/// The pictures of one player, out of the memory that an engine draws into. What is shown stays until the
/// newest surface, of another size or another engine, has its first picture.
class RemoteFrames : public FrameSource {
public:
    /// `resized` is called on the main thread when the engine is to be given a new surface, `flags` for what
    /// is told of the pictures.
    RemoteFrames(std::function<void()> resized, std::function<std::uint32_t()> flags)
        : m_resized(std::move(resized)), m_flags(std::move(flags)) {}

    // FrameSource.
    void SetSize(std::int32_t width, std::int32_t height) override;
    void SetListener(std::function<void()> listener) override;
    void SetPainter(std::function<void()> paint) override { m_painter = std::move(paint); }
    [[nodiscard]] bool HasFrame() const override { return (m_flags() & wire::kHasFrame) != 0; }
    [[nodiscard]] bool HasPicture() const override { return (m_flags() & wire::kHasPicture) != 0; }
    void Visit(const std::function<void(const FrameView&)>& visit) const override;

    /// Makes a surface of the size asked for, for an engine to draw into. Null where none is asked for, or
    /// there is no memory. Valid until the next call.
    const wire::SurfaceReader* NewSurface();
    /// Something has changed. Any thread.
    void Tell();
    /// Main thread, while the event loop is held up.
    void Paint() const;

private:
    /// The newest surface is what is shown, once it has a picture. Under m_mutex.
    bool TakeFirst() const;

    const std::function<void()> m_resized;
    const std::function<std::uint32_t()> m_flags;

    mutable std::mutex m_mutex;
    // Under m_mutex.
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    mutable std::unique_ptr<wire::SurfaceReader> m_shown; ///< null before the first picture
    mutable std::unique_ptr<wire::SurfaceReader> m_next;  ///< that has no picture yet

    std::mutex m_listenerMutex;
    std::function<void()> m_listener;
    std::function<void()> m_painter; ///< the main thread's
};

} // namespace kirolane::remote
