#include "backends/remote/remote_frames.h"

#include <algorithm>
#include <utility>

namespace kirolane::remote {

namespace {
constexpr std::int32_t kLeastSize = 16;
constexpr std::int32_t kGreatestSize = 16384;
} // namespace

void RemoteFrames::SetSize(std::int32_t width, std::int32_t height) {
    {
        const std::lock_guard lock(m_mutex);
        if (width == m_width && height == m_height)
            return;
        m_width = width;
        m_height = height;
    }
    m_resized();
}

const wire::SurfaceReader* RemoteFrames::NewSurface() {
    const std::lock_guard lock(m_mutex);
    TakeFirst(); // a last picture that nobody has looked at yet stays, too
    m_next.reset();
    if (m_width <= 0 || m_height <= 0)
        return nullptr;
    m_next = std::make_unique<wire::SurfaceReader>(std::clamp(m_width, kLeastSize, kGreatestSize),
                                                   std::clamp(m_height, kLeastSize, kGreatestSize));
    if (!m_next->IsThere())
        m_next.reset();
    return m_next.get();
}

void RemoteFrames::SetListener(std::function<void()> listener) {
    const std::lock_guard lock(m_listenerMutex);
    m_listener = std::move(listener);
}

void RemoteFrames::Tell() {
    const std::lock_guard lock(m_listenerMutex);
    if (m_listener)
        m_listener();
}

void RemoteFrames::Paint() const {
    if (m_painter)
        m_painter();
}

bool RemoteFrames::TakeFirst() const {
    if (m_next == nullptr || !m_next->Take())
        return false;
    m_shown = std::exchange(m_next, nullptr);
    return true;
}

void RemoteFrames::Visit(const std::function<void(const FrameView&)>& visit) const {
    const std::lock_guard lock(m_mutex); // of visitors only: whoever draws has slots of its own
    if (!TakeFirst() && m_shown != nullptr)
        m_shown->Take();
    if (m_shown != nullptr)
        visit(m_shown->View());
}

} // namespace kirolane::remote
