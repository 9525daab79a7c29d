#include "platform/mpv/picture_path.h"

#include <algorithm>

namespace kirolane::mpv {

namespace {
/// Where no picture is asked for, one of this size is made: it costs next to nothing and keeps time.
constexpr std::int32_t kLeastSize = 16;
constexpr std::int32_t kGreatestSize = 16384;
constexpr std::size_t kAlignment = 64;

std::int32_t Clamped(std::int32_t size) {
    return std::clamp(size, kLeastSize, kGreatestSize);
}
} // namespace

PicturePath::PicturePath() : m_worker([this] { Run(); }) {}

PicturePath::~PicturePath() {
    Detach();
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_work.notify_one();
    m_worker.join();
}

void PicturePath::Attach(mpv_render_context* renderer) {
    {
        const std::lock_guard lock(m_mutex);
        m_renderer = renderer;
    }
    // Called at once, and then on libmpv's threads.
    mpv_render_context_set_update_callback(
        renderer,
        [](void* self) {
            auto* path = static_cast<PicturePath*>(self);
            {
                const std::lock_guard lock(path->m_mutex);
                path->m_wake = true;
            }
            path->m_work.notify_one();
        },
        this);
}

void PicturePath::Detach() {
    std::unique_lock lock(m_mutex);
    mpv_render_context* renderer = std::exchange(m_renderer, nullptr);
    m_rested.wait(lock, [this] { return !m_busy; });
    lock.unlock();
    if (renderer != nullptr)
        mpv_render_context_set_update_callback(renderer, nullptr, nullptr);
}

void PicturePath::Expect() {
    {
        const std::lock_guard lock(m_mutex);
        m_tell = m_stage == Stage::Shown;
        m_stage = Stage::Expected;
        m_hasPicture = false;
        m_first = false;
        ++m_epoch;
    }
    m_work.notify_one();
}

void PicturePath::FileStarted() {
    const std::lock_guard lock(m_mutex);
    m_stage = Stage::Started;
    ++m_epoch;
}

void PicturePath::FirstPictureTaken() {
    {
        const std::lock_guard lock(m_mutex);
        if (m_stage != Stage::Started)
            return;
        m_again = true;
        m_first = true;
    }
    m_work.notify_one();
}

void PicturePath::SetHasPicture(bool has) {
    const std::lock_guard lock(m_mutex);
    m_hasPicture = has;
}

void PicturePath::SetSize(std::int32_t width, std::int32_t height) {
    {
        const std::lock_guard lock(m_mutex);
        if (width == m_width && height == m_height)
            return;
        m_width = width;
        m_height = height;
        m_again = true;
    }
    m_work.notify_one();
}

void PicturePath::SetListener(std::function<void()> listener) {
    const std::lock_guard lock(m_listenerMutex);
    m_listener = std::move(listener);
}

bool PicturePath::HasFrame() const {
    const std::lock_guard lock(m_mutex);
    return m_stage == Stage::Shown;
}

bool PicturePath::HasPicture() const {
    const std::lock_guard lock(m_mutex);
    return m_hasPicture;
}

void PicturePath::Visit(const std::function<void(const FrameView&)>& visit) const {
    const std::lock_guard lock(m_frontMutex);
    if (m_front.pixels != nullptr)
        visit(m_front.view);
}

void PicturePath::Run() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_work.wait(lock, [this] { return m_quit || m_wake || m_again || m_tell; });
        if (m_quit)
            return;
        bool tell = std::exchange(m_tell, false);
        const bool woken = std::exchange(m_wake, false);
        const bool first = std::exchange(m_first, false);
        // Without a picture of this file the renderer would draw black over the last one of the file before.
        const bool again = std::exchange(m_again, false) && (first || m_stage == Stage::Shown);
        if (m_renderer != nullptr && (woken || again)) {
            mpv_render_context* renderer = m_renderer;
            const auto width = Clamped(m_width);
            const auto height = Clamped(m_height);
            const unsigned epoch = m_epoch;
            m_busy = true;
            lock.unlock();
            bool fresh = false;
            const bool rendered = Render(renderer, width, height, again, fresh);
            if (rendered)
                Publish();
            lock.lock();
            m_busy = false;
            m_rested.notify_all();
            if (rendered && epoch == m_epoch && m_stage == Stage::Started && (fresh || first))
                m_stage = Stage::Shown;
            tell = tell || rendered;
        }
        if (tell) {
            lock.unlock();
            Tell();
            lock.lock();
        }
    }
}

bool PicturePath::Render(mpv_render_context* renderer, std::int32_t width, std::int32_t height, bool again,
                         bool& fresh) {
    const bool update = (mpv_render_context_update(renderer) & MPV_RENDER_UPDATE_FRAME) != 0;
    if (!update && !again)
        return false;
    mpv_render_frame_info info{};
    mpv_render_context_get_info(renderer, {MPV_RENDER_PARAM_NEXT_FRAME_INFO, &info});
    fresh = (info.flags & MPV_RENDER_FRAME_INFO_PRESENT) != 0 &&
            (info.flags & (MPV_RENDER_FRAME_INFO_REDRAW | MPV_RENDER_FRAME_INFO_REPEAT)) == 0;

    std::size_t stride = (static_cast<std::size_t>(width) * 4 + kAlignment - 1) / kAlignment * kAlignment;
    const std::size_t bytes = stride * static_cast<std::size_t>(height);
    if (m_back.bytes != bytes) {
        m_back.pixels.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, bytes)));
        m_back.bytes = m_back.pixels != nullptr ? bytes : 0;
    }
    int size[2] = {width, height};
    int wait = 0; // shown as soon as it is there; libmpv gives it at its time
    int skip = m_back.pixels == nullptr ? 1 : 0;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, m_back.pixels.get()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(renderer, params) < 0 || skip != 0)
        return false;
    m_back.view = {m_back.pixels.get(), width, height, static_cast<std::int32_t>(stride), ++m_serial};
    return true;
}

void PicturePath::Publish() {
    const std::lock_guard lock(m_frontMutex);
    std::swap(m_front, m_back);
}

void PicturePath::Tell() {
    const std::lock_guard lock(m_listenerMutex);
    if (m_listener)
        m_listener();
}

} // namespace kirolane::mpv
