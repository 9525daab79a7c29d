#include "bare_player.h"

#include "clocks.h"
#include "frame_code.h"
#include "wall.h"

#include "backends/mpv/deck_options.h"

#include <array>
#include <stdexcept>

#include <mpv/render.h>

namespace kirolane::bench {

namespace {
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kStride = 4 * kWidth;
constexpr double kPatience = 10.0; ///< seconds for any answer of libmpv
constexpr int kNear = 10;          ///< frames behind the one awaited
} // namespace

BarePlayer::BarePlayer(Wall* wall)
    : m_wall(wall), m_handle(mpv_create()), m_pixels(wall == nullptr ? kStride * kHeight + 64 : 0) {
    mpv::MpvOptions options;
    options.audioOutput = "null";
    mpv::ApplyOptions(m_handle, {"Bare.QTM", mpv::Role::Stage, "Bare"}, options);
    if (mpv_initialize(m_handle) < 0)
        throw std::runtime_error("libmpv does not start");
    std::array<mpv_render_param, 2> parameters{{
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_SW)},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    }};
    if (mpv_render_context_create(&m_context, m_handle, parameters.data()) < 0)
        throw std::runtime_error("libmpv does not render");
    mpv_render_context_set_update_callback(
        m_context,
        [](void* self) {
            auto* player = static_cast<BarePlayer*>(self);
            const std::lock_guard lock(player->m_mutex);
            player->m_update = true;
            player->m_changed.notify_all();
        },
        this);
    m_worker = std::thread([this] { Render(); });
}

BarePlayer::~BarePlayer() {
    mpv_render_context_set_update_callback(m_context, nullptr, nullptr);
    {
        const std::lock_guard lock(m_mutex);
        m_end = true;
        m_changed.notify_all();
    }
    m_worker.join();
    mpv_render_context_free(m_context);
    mpv_terminate_destroy(m_handle);
}

void BarePlayer::Render() {
    // 64-byte aligned, as libmpv wants it for its fast paths.
    auto* pixels = m_wall != nullptr
                       ? m_wall->Picture()
                       : m_pixels.data() + (64 - reinterpret_cast<std::uintptr_t>(m_pixels.data()) % 64) % 64;
    int size[2] = {kWidth, kHeight};
    std::size_t stride = kStride;
    int noWait = 0;
    std::array<mpv_render_param, 6> parameters{{
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, const_cast<char*>("bgr0")},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, pixels},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &noWait},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    }};
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_update || m_end; });
        if (m_end)
            return;
        m_update = false;
        lock.unlock();
        const bool frame = (mpv_render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME) != 0;
        if (frame)
            mpv_render_context_render(m_context, parameters.data());
        if (frame && m_wall != nullptr)
            m_wall->Put();
        lock.lock();
        if (frame) {
            ++m_frames;
            const Sight sight =
                m_awaited ? LookAt({pixels, kWidth, kHeight, static_cast<int>(kStride)}) : Sight();
            if (sight.kind == Sight::Kind::Frame && sight.frame >= *m_awaited &&
                sight.frame <= *m_awaited + kNear)
                m_awaited.reset();
        }
        m_changed.notify_all();
    }
}

void BarePlayer::Command(std::vector<const char*> words) {
    words.push_back(nullptr);
    if (mpv_command(m_handle, words.data()) < 0)
        throw std::runtime_error("libmpv refuses a command");
}

void BarePlayer::SetRunning(bool running) {
    int pause = running ? 0 : 1;
    mpv_set_property(m_handle, "pause", MPV_FORMAT_FLAG, &pause);
}

void BarePlayer::SetFilter(const std::string& filter) {
    if (mpv_set_property_string(m_handle, "vf", ("lavfi=[" + filter + "]").c_str()) < 0)
        throw std::runtime_error("libmpv refuses a filter");
}

double BarePlayer::Seek(double seconds, int frame) {
    while (mpv_wait_event(m_handle, 0)->event_id != MPV_EVENT_NONE)
        ; // the queue would run over
    {
        const std::lock_guard lock(m_mutex);
        m_awaited = frame;
    }
    const StopWatch watch;
    Command({"seek", std::to_string(seconds).c_str(), "absolute+exact"});
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, std::chrono::duration<double>(kPatience), [this] { return !m_awaited; }))
        throw std::runtime_error("libmpv does not come to the frame");
    return watch.Milliseconds();
}

double BarePlayer::Open(const std::string& path, bool running) {
    const StopWatch watch;
    SetRunning(running);
    Command({"loadfile", path.c_str()});
    for (bool loaded = false; !loaded;) {
        const mpv_event* event = mpv_wait_event(m_handle, kPatience);
        loaded = event->event_id == MPV_EVENT_FILE_LOADED;
        if (event->event_id == MPV_EVENT_NONE)
            throw std::runtime_error("libmpv does not open the clip");
    }
    std::unique_lock lock(m_mutex);
    const std::uint64_t before = m_frames;
    m_changed.wait(lock, [&] { return m_frames > before; });
    return watch.Milliseconds();
}

void BarePlayer::Close() {
    Command({"stop"});
    for (bool idle = false; !idle;) {
        const mpv_event* event = mpv_wait_event(m_handle, kPatience);
        idle = event->event_id == MPV_EVENT_IDLE;
        if (event->event_id == MPV_EVENT_NONE)
            throw std::runtime_error("libmpv does not close the clip");
    }
}

} // namespace kirolane::bench
