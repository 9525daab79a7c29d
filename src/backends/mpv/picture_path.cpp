#include "backends/mpv/picture_path.h"

#include "backends/mpv/scale_down.h"
#include "backends/mpv/thread_niceness.h"

#include <algorithm>
#include <atomic>

namespace kirolane::mpv {

namespace {
/// Where no picture is asked for, one of this size is made: it costs next to nothing and keeps time.
constexpr std::int32_t kLeastSize = 16;
constexpr std::int32_t kGreatestSize = 16384;
constexpr std::size_t kAlignment = 64;

std::int32_t Clamped(std::int32_t size) {
    return std::clamp(size, kLeastSize, kGreatestSize);
}

/// A slot of the surface with that picture, in the surface's size; null if there is none.
std::shared_ptr<wire::Slot> Drawn(wire::SurfaceWriter& surface, const FrameView& picture) {
    auto slot = surface.Take();
    if (slot == nullptr || picture.pixels == nullptr)
        return nullptr;
    const FrameView layout = slot->View();
    if (IsFarSmaller(layout.width, layout.height, picture))
        ScaleDown(picture, slot->Pixels(), layout);
    else
        Stretch(picture, slot->Pixels(), layout);
    return slot;
}

bool IsBlack(const FrameView& view) {
    const auto* end = view.pixels + static_cast<std::ptrdiff_t>(view.stride) * view.height;
    const int pixel = 4; // of which the last byte is nothing
    for (const std::uint8_t* at = view.pixels; at < end; at += pixel)
        if ((at[0] | at[1] | at[2]) != 0)
            return false;
    return true;
}

void DrawOn(wire::SurfaceWriter& surface, const FrameView& picture) {
    if (const auto slot = Drawn(surface, picture))
        slot->Show();
}
} // namespace

PicturePath::PicturePath(int niceness, std::function<void()> onPicture)
    : m_onPicture(std::move(onPicture)), m_worker([this, niceness] { Run(niceness); }) {}

PicturePath::~PicturePath() {
    Detach();
    {
        const std::lock_guard lock(m_mutex);
        m_todo.quit = true;
    }
    m_work.notify_one();
    m_worker.join();
}

void PicturePath::Attach(mpv_render_context* renderer) {
    {
        const std::lock_guard lock(m_mutex);
        m_renderer = renderer;
        m_own = false; // what is shown stays until its first picture
    }
    // Called at once, and then on libmpv's threads.
    mpv_render_context_set_update_callback(
        renderer,
        [](void* self) {
            auto* path = static_cast<PicturePath*>(self);
            {
                const std::lock_guard lock(path->m_mutex);
                path->m_todo.look = true;
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
        m_todo.tell = m_todo.tell || m_progress == Progress::Shown;
        m_progress = Progress::Expected;
        m_own = false;
        m_hasPicture = false;
        m_following = Following::Nobody;
        m_follower = nullptr;
        m_todo.first = false;
        ++m_epoch;
    }
    m_work.notify_one();
}

void PicturePath::FileStarted() {
    const std::lock_guard lock(m_mutex);
    if (m_progress == Progress::Expected) // else it shows this very file already, the leader's pictures of it
        m_progress = Progress::Started;
    if (m_following == Following::Rests)
        m_following = Following::UntilOwn;
    ++m_epoch;
}

void PicturePath::FirstPictureTaken() {
    {
        const std::lock_guard lock(m_mutex);
        if (m_own)
            return;
        m_todo.first = true;
    }
    m_work.notify_one();
}

void PicturePath::SetHasPicture(bool has) {
    const std::lock_guard lock(m_mutex);
    m_hasPicture = has;
    if (m_follower == nullptr)
        return;
    const std::lock_guard follower(m_follower->m_mutex);
    if (m_follower->m_following == Following::Rests)
        m_follower->m_hasPicture = has;
}

unsigned PicturePath::Lead(PicturePath& follower) {
    unsigned lead = 0;
    {
        const std::lock_guard lock(m_mutex);
        const std::lock_guard other(follower.m_mutex);
        m_follower = &follower;
        m_followerLead = lead = ++follower.m_lead;
        follower.m_following = Following::Rests;
        follower.m_own = false;
        follower.m_hasPicture = m_hasPicture;
    }
    DrawAgain();
    return lead;
}

void PicturePath::LeaveBehind(const PicturePath& follower) {
    std::unique_lock lock(m_mutex);
    if (m_follower == &follower)
        m_follower = nullptr;
    m_rested.wait(lock, [this] { return !m_busy; }); // one that Expect let go may still be being shown to
}

void PicturePath::SetSurface(std::shared_ptr<wire::SurfaceWriter> surface) {
    Size size;
    if (surface != nullptr)
        size = {surface->Layout().width, surface->Layout().height};
    bool drawn = false;
    {
        const std::lock_guard front(m_frontMutex);
        const std::lock_guard lock(m_mutex);
        m_surface = std::move(surface);
        m_size = size;
        drawn = m_surface != nullptr && m_following != Following::Nobody && !m_own;
        if (drawn) // the leader may stand, and have nothing new to show
            DrawOn(*m_surface, m_front.view);
    }
    DrawAgain();
    if (drawn)
        Tell();
}

void PicturePath::SetSize(std::int32_t width, std::int32_t height) {
    {
        const std::lock_guard lock(m_mutex);
        if (width == m_size.width && height == m_size.height)
            return;
        m_size = {width, height};
    }
    DrawAgain();
}

void PicturePath::DrawAgain() {
    {
        const std::lock_guard lock(m_mutex);
        m_todo.again = true;
    }
    m_work.notify_one();
}

PicturePath::Size PicturePath::WantedSize() const {
    const std::lock_guard lock(m_mutex);
    return m_size;
}

PicturePath::Size PicturePath::SizeToDraw() const {
    if (m_follower == nullptr)
        return m_size;
    const Size follower = m_follower->WantedSize();
    return {std::max(m_size.width, follower.width), std::max(m_size.height, follower.height)};
}

void PicturePath::SetListener(std::function<void()> listener) {
    const std::lock_guard lock(m_listenerMutex);
    m_listener = std::move(listener);
}

void PicturePath::Paint() const {
    if (m_painter)
        m_painter();
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
    Buffer shown;
    {
        const std::lock_guard lock(m_frontMutex);
        shown = m_front;
    }
    if (shown.pixels == nullptr)
        return;
    const Size wanted = WantedSize();
    const bool small = shown.smallPixels != nullptr && shown.small.width == wanted.width &&
                       shown.small.height == wanted.height;
    visit(small ? shown.small : shown.view); // without a lock: the worker's next picture waits for no painter
}

void PicturePath::Forget() {
    {
        std::unique_lock lock(m_mutex);
        m_rested.wait(lock, [this] { return !m_busy; });
        m_back = {};
        m_small = {};
        if (m_surface != nullptr)
            m_surface->Clear();
    }
    const std::lock_guard front(m_frontMutex); // on its own: a leader's worker takes this one first
    m_front = {};
}

void PicturePath::Run(int niceness) {
    SetThreadNiceness(niceness);
    std::unique_lock lock(m_mutex);
    while (true) {
        m_work.wait(lock, [this] { return m_todo.Any(); });
        if (m_todo.quit)
            return;
        Turn(lock);
    }
}

void PicturePath::Turn(std::unique_lock<std::mutex>& lock) {
    bool published = false;
    bool tell = std::exchange(m_todo.tell, false);
    const bool woken = std::exchange(m_todo.look, false);
    const bool first = std::exchange(m_todo.first, false) && !m_own;
    // Without a picture of this file the renderer would draw black, or one of the file before.
    const bool again = (std::exchange(m_todo.again, false) && m_own) || first;
    if (m_renderer != nullptr && (woken || again)) {
        mpv_render_context* renderer = m_renderer;
        const Size size = SizeToDraw();
        const unsigned epoch = m_epoch;
        const auto surface = m_surface;
        m_busy = true;
        lock.unlock();
        bool fresh = false;
        const bool rendered = Render(renderer, size, again, m_back, fresh, surface.get());
        lock.lock();

        const bool ours = rendered && epoch == m_epoch && m_progress >= Progress::Started &&
                          (fresh || first) && m_following != Following::Rests;
        m_own = m_own || ours;
        if (rendered && m_following != Following::Rests && (m_own || m_progress != Progress::Shown)) {
            lock.unlock();
            Publish(m_back, surface.get());
            lock.lock();
            published = true;
        }
        if (ours && epoch == m_epoch)
            m_progress = Progress::Shown;
        if (published && m_own && m_follower != nullptr)
            ShowToFollower(lock);
        m_busy = false;
        m_rested.notify_all();
    }
    if (tell || published) { // after the follower: the main thread is woken once for both
        lock.unlock();
        Tell();
        lock.lock();
    }
}

bool PicturePath::Render(mpv_render_context* renderer, Size asked, bool again, Buffer& buffer, bool& fresh,
                         wire::SurfaceWriter* surface) {
    const bool update = (mpv_render_context_update(renderer) & MPV_RENDER_UPDATE_FRAME) != 0;
    if (!update && !again)
        return false;
    mpv_render_frame_info info{};
    mpv_render_context_get_info(renderer, {MPV_RENDER_PARAM_NEXT_FRAME_INFO, &info});
    const bool present = (info.flags & MPV_RENDER_FRAME_INFO_PRESENT) != 0;
    const bool redraw = (info.flags & MPV_RENDER_FRAME_INFO_REDRAW) != 0;
    fresh = present && !redraw && (info.flags & MPV_RENDER_FRAME_INFO_REPEAT) == 0;

    const bool fits = Fit(buffer, asked, surface);
    int size[2] = {buffer.view.width, buffer.view.height};
    auto stride = static_cast<std::size_t>(buffer.view.stride);
    int wait = 0;                                              // libmpv gives a picture at its time
    int skip = !fits || (present && redraw && !again) ? 1 : 0; // drawn already
    if (surface != nullptr && !present && !again)
        skip = 1; // black; what is there in the other process stays
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, buffer.slot != nullptr ? buffer.slot->Pixels() : buffer.pixels.get()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(renderer, params) < 0 || skip != 0)
        return false;
    // Once more what it drew last, or black, if it has just been set to pictures of another kind.
    return surface == nullptr || present || !IsBlack(buffer.view);
}

bool PicturePath::Fit(Buffer& buffer, Size asked, wire::SurfaceWriter* surface) {
    const Size size{Clamped(asked.width), Clamped(asked.height)};
    if (surface != nullptr && surface->Layout().width == size.width &&
        surface->Layout().height == size.height) {
        if (buffer.slot != nullptr && buffer.slot->IsOpenOf(*surface))
            return true;
        buffer = {};
        buffer.slot = surface->Take();
        if (buffer.slot != nullptr)
            buffer.view = buffer.slot->View();
        return buffer.slot != nullptr;
    }
    if (buffer.slot != nullptr)
        buffer = {};
    const std::size_t stride =
        (static_cast<std::size_t>(size.width) * 4 + kAlignment - 1) / kAlignment * kAlignment;
    const std::size_t bytes = stride * static_cast<std::size_t>(size.height);
    if (buffer.bytes != bytes || buffer.pixels.use_count() != 1) {
        buffer.pixels.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kAlignment, bytes)), &std::free);
        buffer.bytes = buffer.pixels != nullptr ? bytes : 0;
    }
    buffer.view = {buffer.pixels.get(), size.width, size.height, static_cast<std::int32_t>(stride)};
    std::atomic_thread_fence(std::memory_order_acquire); // after the last look of who held it, too
    return buffer.pixels != nullptr;
}

void PicturePath::AddSmall(Buffer& picture, Size size) {
    if (!IsFarSmaller(size.width, size.height, picture.view))
        return;
    const auto free = std::find_if(m_small.begin(), m_small.end(),
                                   [](const Buffer& small) { return small.pixels.use_count() <= 1; });
    Buffer& small = free != m_small.end() ? *free : m_small.front();
    if (!Fit(small, size))
        return;
    ScaleDown(picture.view, small.pixels.get(), small.view);
    picture.smallPixels = small.pixels;
    picture.small = small.view;
}

void PicturePath::Publish(Buffer& buffer, wire::SurfaceWriter* surface) {
    if (buffer.slot != nullptr)
        buffer.slot->Show();
    else if (surface != nullptr)
        DrawOn(*surface, buffer.view);
    const std::lock_guard lock(m_frontMutex);
    std::swap(m_front, buffer);
    if (buffer.lent)
        buffer = {};
}

void PicturePath::ShowToFollower(std::unique_lock<std::mutex>& lock) {
    PicturePath* follower = m_follower;
    const unsigned lead = m_followerLead;
    lock.unlock();
    Buffer picture;
    {
        const std::lock_guard front(m_frontMutex);
        picture = m_front;
    }
    if (!follower->HasSurface())
        AddSmall(picture, follower->WantedSize());
    const bool follows = follower->TakeLead(picture, lead);
    lock.lock();
    if (!follows && m_follower == follower && m_followerLead == lead)
        m_follower = nullptr;
}

bool PicturePath::HasSurface() const {
    const std::lock_guard lock(m_mutex);
    return m_surface != nullptr;
}

bool PicturePath::TakeLead(const Buffer& picture, unsigned lead) {
    Buffer shared = picture;
    shared.lent = true;
    std::shared_ptr<wire::SurfaceWriter> surface;
    {
        const std::lock_guard lock(m_mutex);
        if (lead == m_lead && m_following != Following::Nobody && !m_own)
            surface = m_surface;
    }
    const auto slot = surface != nullptr ? Drawn(*surface, picture.view) : nullptr;
    {
        // Both: no other file may come in between.
        const std::lock_guard front(m_frontMutex);
        const std::lock_guard lock(m_mutex);
        if (lead != m_lead || m_following == Following::Nobody || m_own)
            return false;
        if (slot != nullptr)
            slot->Show();
        std::swap(m_front, shared);
        m_progress = Progress::Shown;
    }
    Tell();
    return true;
}

void PicturePath::Tell() {
    {
        const std::lock_guard lock(m_listenerMutex);
        if (m_listener)
            m_listener();
    }
    m_onPicture();
}

} // namespace kirolane::mpv
