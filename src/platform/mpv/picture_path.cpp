#include "platform/mpv/picture_path.h"

#include "platform/mpv/thread_niceness.h"

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

PicturePath::PicturePath(int niceness) : m_worker([this, niceness] { Run(niceness); }) {}

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
    std::unique_lock lock(m_mutex);
    m_tell = m_tell || m_progress == Progress::Shown;
    m_progress = Progress::Expected;
    m_own = false;
    m_hasPicture = false;
    m_twin = nullptr;
    m_first = false;
    ++m_epoch;
    lock.unlock();
    m_work.notify_one();
}

void PicturePath::FileStarted() {
    const std::lock_guard lock(m_mutex);
    m_progress = Progress::Started;
    ++m_epoch;
}

void PicturePath::FirstPictureTaken() {
    {
        const std::lock_guard lock(m_mutex);
        if (m_own)
            return;
        m_first = true;
    }
    m_work.notify_one();
}

void PicturePath::SetHasPicture(bool has) {
    const std::lock_guard lock(m_mutex);
    m_hasPicture = has;
}

void PicturePath::ShareFirst(PicturePath& twin) {
    const std::lock_guard lock(m_mutex);
    m_twin = &twin;
}

void PicturePath::Unshare(const PicturePath& twin) {
    std::unique_lock lock(m_mutex);
    if (m_twin != &twin)
        return;
    m_twin = nullptr;
    m_rested.wait(lock, [this] { return !m_busy; });
}

void PicturePath::SetSize(std::int32_t width, std::int32_t height) {
    {
        const std::lock_guard lock(m_mutex);
        if (width == m_size.width && height == m_size.height)
            return;
        m_size = {width, height};
        m_again = true;
    }
    m_work.notify_one();
}

PicturePath::Size PicturePath::WantedSize() const {
    const std::lock_guard lock(m_mutex);
    return m_size;
}

void PicturePath::SetListener(std::function<void()> listener) {
    const std::lock_guard lock(m_listenerMutex);
    m_listener = std::move(listener);
}

bool PicturePath::HasFrame() const {
    const std::lock_guard lock(m_mutex);
    return m_progress == Progress::Shown;
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

void PicturePath::Run(int niceness) {
    SetThreadNiceness(niceness);
    std::unique_lock lock(m_mutex);
    while (true) {
        m_work.wait(lock, [this] { return m_quit || m_wake || m_again || m_first || m_tell; });
        if (m_quit)
            return;
        Turn(lock);
    }
}

void PicturePath::Turn(std::unique_lock<std::mutex>& lock) {
    bool tell = std::exchange(m_tell, false);
    const bool woken = std::exchange(m_wake, false);
    const bool first = std::exchange(m_first, false) && !m_own;
    // Without a picture of this file the renderer would draw black, or one of the file before.
    const bool again = (std::exchange(m_again, false) && m_own) || first;
    if (m_renderer != nullptr && (woken || again)) {
        mpv_render_context* renderer = m_renderer;
        const Size size = m_size;
        const unsigned epoch = m_epoch;
        m_busy = true;
        lock.unlock();
        bool fresh = false;
        const bool rendered = Render(renderer, size, again, m_back, fresh);
        lock.lock();

        const bool ours = rendered && epoch == m_epoch && m_progress >= Progress::Started && (fresh || first);
        m_own = m_own || ours;
        if (rendered && (m_own || m_progress != Progress::Shown)) {
            lock.unlock();
            Publish(m_back);
            lock.lock();
            tell = true;
        }
        if (ours && epoch == m_epoch) {
            const bool begins = m_progress == Progress::Started;
            m_progress = Progress::Shown;
            if (PicturePath* twin = std::exchange(m_twin, nullptr); begins && twin != nullptr) {
                lock.unlock();
                Buffer gift;
                if (Render(renderer, twin->WantedSize(), true, gift, fresh))
                    twin->TakeGift(gift);
                lock.lock();
            }
        }
        m_busy = false;
        m_rested.notify_all();
    }
    if (tell) {
        lock.unlock();
        Tell();
        lock.lock();
    }
}

bool PicturePath::Render(mpv_render_context* renderer, Size asked, bool again, Buffer& buffer, bool& fresh) {
    const bool update = (mpv_render_context_update(renderer) & MPV_RENDER_UPDATE_FRAME) != 0;
    if (!update && !again)
        return false;
    mpv_render_frame_info info{};
    mpv_render_context_get_info(renderer, {MPV_RENDER_PARAM_NEXT_FRAME_INFO, &info});
    fresh = (info.flags & MPV_RENDER_FRAME_INFO_PRESENT) != 0 &&
            (info.flags & (MPV_RENDER_FRAME_INFO_REDRAW | MPV_RENDER_FRAME_INFO_REPEAT)) == 0;

    int size[2] = {Clamped(asked.width), Clamped(asked.height)};
    std::size_t stride = (static_cast<std::size_t>(size[0]) * 4 + kAlignment - 1) / kAlignment * kAlignment;
    const std::size_t bytes = stride * static_cast<std::size_t>(size[1]);
    if (buffer.bytes != bytes) {
        buffer.pixels.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, bytes)));
        buffer.bytes = buffer.pixels != nullptr ? bytes : 0;
    }
    int wait = 0; // libmpv gives a picture at its time
    int skip = buffer.pixels == nullptr ? 1 : 0;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, buffer.pixels.get()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(renderer, params) < 0 || skip != 0)
        return false;
    buffer.view = {buffer.pixels.get(), size[0], size[1], static_cast<std::int32_t>(stride), 0};
    return true;
}

void PicturePath::Publish(Buffer& buffer) {
    const std::lock_guard lock(m_frontMutex);
    std::swap(m_front, buffer);
    m_front.view.serial = ++m_serial;
}

void PicturePath::TakeGift(Buffer& gift) {
    std::unique_lock lock(m_mutex);
    const unsigned epoch = m_epoch;
    if (m_progress != Progress::Started)
        return;
    lock.unlock();
    Publish(gift);
    lock.lock();
    if (epoch != m_epoch || m_progress != Progress::Started)
        return;
    m_progress = Progress::Shown;
    m_tell = true;
    lock.unlock();
    m_work.notify_one();
}

void PicturePath::Tell() {
    const std::lock_guard lock(m_listenerMutex);
    if (m_listener)
        m_listener();
}

} // namespace kirolane::mpv
