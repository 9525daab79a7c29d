#include "camera.h"

#include "clocks.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace kirolane::bench {

namespace {

constexpr int kLongest = 12; ///< milliseconds between two looks where nothing changes
constexpr int kPixelBytes = 4;

/// An area of the screen and the shared memory that its pictures come in.
class Grab {
public:
    Grab(xcb_connection_t* x, Area area) : m_x(x), m_area(area) {
        if (area.width == 0)
            return;
        const int id =
            ::shmget(IPC_PRIVATE, static_cast<std::size_t>(area.width) * area.height * kPixelBytes, 0600);
        void* memory = id < 0 ? nullptr : ::shmat(id, nullptr, 0);
        m_segment = xcb_generate_id(x);
        const auto attached = xcb_shm_attach_checked(x, m_segment, static_cast<std::uint32_t>(id), 0);
        const bool failed = xcb_request_check(x, attached) != nullptr;
        ::shmctl(id, IPC_RMID, nullptr); // gone with its last user
        if (failed)
            throw std::runtime_error("the screen's pictures cannot be had in shared memory");
        m_memory = static_cast<std::uint8_t*>(memory);
    }

    void Ask(xcb_window_t root) {
        if (m_memory != nullptr)
            m_cookie = xcb_shm_get_image(
                m_x, root, static_cast<std::int16_t>(m_area.left), static_cast<std::int16_t>(m_area.top),
                static_cast<std::uint16_t>(m_area.width), static_cast<std::uint16_t>(m_area.height), ~0U,
                XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0);
    }
    /// Waits for what was asked for.
    void Receive() {
        if (m_memory == nullptr)
            return;
        auto* reply = xcb_shm_get_image_reply(m_x, m_cookie, nullptr);
        if (reply == nullptr)
            throw std::runtime_error("the screen cannot be looked at");
        std::free(reply);
    }
    [[nodiscard]] bool Meets(const xcb_rectangle_t& drawn) const {
        return drawn.x < m_area.left + m_area.width && m_area.left < drawn.x + drawn.width &&
               drawn.y < m_area.top + m_area.height && m_area.top < drawn.y + drawn.height;
    }
    [[nodiscard]] Sight Look() const {
        if (m_memory == nullptr)
            return {};
        return LookAt({m_memory, m_area.width, m_area.height, m_area.width * kPixelBytes});
    }

private:
    xcb_connection_t* m_x;
    Area m_area;
    xcb_shm_seg_t m_segment = 0;
    std::uint8_t* m_memory = nullptr;
    xcb_shm_get_image_cookie_t m_cookie{};
};

} // namespace

struct Camera::Screen {
    Screen(Area stageArea, Area previewArea)
        : x(xcb_connect(nullptr, nullptr)), root(xcb_setup_roots_iterator(xcb_get_setup(x)).data->root),
          stage(x, stageArea), preview(x, previewArea) {
        const auto* damage = xcb_get_extension_data(x, &xcb_damage_id);
        if (damage == nullptr || damage->present == 0)
            throw std::runtime_error("the display does not report what is drawn");
        damageNotify = damage->first_event + XCB_DAMAGE_NOTIFY;
        std::free(xcb_damage_query_version_reply(x, xcb_damage_query_version(x, 1, 1), nullptr));
        xcb_damage_create(x, xcb_generate_id(x), root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        xcb_flush(x);
    }
    ~Screen() { xcb_disconnect(x); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Whether something has been drawn where the camera looks. Takes in all reports, those too that came
    /// along with pictures and lie in the queue.
    bool Drawn() {
        bool drawn = false;
        while (xcb_generic_event_t* event = xcb_poll_for_event(x)) {
            if ((event->response_type & 0x7f) == damageNotify) {
                const auto& area = reinterpret_cast<xcb_damage_notify_event_t*>(event)->area;
                drawn = drawn || stage.Meets(area) || preview.Meets(area);
            }
            std::free(event);
        }
        if (xcb_connection_has_error(x) != 0)
            throw std::runtime_error("the display has gone");
        return drawn;
    }

    Shot Look() {
        Shot shot;
        stage.Ask(root);
        preview.Ask(root); // with the other in one message, so that the server answers them side by side
        stage.Receive();
        preview.Receive();
        shot.milliseconds = watch.Milliseconds();
        shot.stage = stage.Look();
        shot.preview = preview.Look();
        return shot;
    }

    StopWatch watch;
    xcb_connection_t* x;
    xcb_window_t root;
    int damageNotify = 0;
    Grab stage;
    Grab preview;
};

Camera::Camera(Area stage, Area preview, std::function<void()> seen)
    : m_screen(std::make_unique<Screen>(stage, preview)), m_seen(std::move(seen)),
      m_stop(::eventfd(0, EFD_CLOEXEC)), m_thread([this] { Run(); }) {}

Camera::~Camera() {
    ::eventfd_write(m_stop, 1);
    m_thread.join();
    ::close(m_stop);
}

double Camera::Now() const {
    return m_screen->watch.Milliseconds();
}

Shot Camera::Newest() const {
    const std::lock_guard lock(m_mutex);
    return m_newest;
}

std::vector<Shot> Camera::Take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_shots, {});
}

void Camera::Run() {
    std::array<pollfd, 2> sources{{{xcb_get_file_descriptor(m_screen->x), POLLIN, 0}, {m_stop, POLLIN, 0}}};
    double next = 0;
    while (sources[1].revents == 0) {
        const double now = Now();
        const double left = next - now;
        if (!m_screen->Drawn() && left > 0) {
            ::poll(sources.data(), sources.size(), static_cast<int>(std::ceil(left)));
            continue;
        }
        Shot shot = m_screen->Look();
        shot.drawn = now;
        next = shot.milliseconds + kLongest;
        {
            const std::lock_guard lock(m_mutex);
            m_newest = shot;
            m_shots.push_back(shot);
        }
        m_seen();
    }
}

} // namespace kirolane::bench
