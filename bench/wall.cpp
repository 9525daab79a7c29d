#include "wall.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace kirolane::bench {

namespace {
constexpr int kPixelBytes = 4;
}

struct Wall::Display {
    explicit Display(Area where)
        : area(where), x(xcb_connect(nullptr, nullptr)), window(xcb_generate_id(x)), pen(xcb_generate_id(x)),
          segment(xcb_generate_id(x)) {
        const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
        depth = screen.root_depth;
        const std::array<std::uint32_t, 2> values{screen.black_pixel, 1}; // no window manager's
        xcb_create_window(x, XCB_COPY_FROM_PARENT, window, screen.root, static_cast<std::int16_t>(area.left),
                          static_cast<std::int16_t>(area.top), static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen.root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
        xcb_create_gc(x, pen, window, 0, nullptr);
        const int id =
            ::shmget(IPC_PRIVATE, static_cast<std::size_t>(area.width) * area.height * kPixelBytes, 0600);
        picture = id < 0 ? nullptr : static_cast<std::uint8_t*>(::shmat(id, nullptr, 0));
        const auto attached = xcb_shm_attach_checked(x, segment, static_cast<std::uint32_t>(id), 1);
        const bool failed = xcb_request_check(x, attached) != nullptr;
        ::shmctl(id, IPC_RMID, nullptr); // gone with its last user
        if (failed)
            throw std::runtime_error("the display reads no pictures in shared memory");
    }
    ~Display() {
        xcb_disconnect(x);
        ::shmdt(picture);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Until the server has carried out all that it was told.
    void Wait() const { std::free(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr)); }

    Area area;
    xcb_connection_t* x;
    xcb_window_t window;
    xcb_gcontext_t pen;
    xcb_shm_seg_t segment;
    std::uint8_t depth = 0;
    std::uint8_t* picture = nullptr;
};

Wall::Wall(Area area) : m_display(std::make_unique<Display>(area)) {}

Wall::~Wall() = default;

void Wall::Show() {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_display->x, m_display->window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_map_window(m_display->x, m_display->window);
    m_display->Wait();
}

void Wall::Hide() {
    xcb_unmap_window(m_display->x, m_display->window);
    m_display->Wait();
}

std::uint8_t* Wall::Picture() const {
    return m_display->picture;
}

void Wall::Put() {
    const auto width = static_cast<std::uint16_t>(m_display->area.width);
    const auto height = static_cast<std::uint16_t>(m_display->area.height);
    xcb_shm_put_image(m_display->x, m_display->window, m_display->pen, width, height, 0, 0, width, height, 0,
                      0, m_display->depth, XCB_IMAGE_FORMAT_Z_PIXMAP, 0, m_display->segment, 0);
    m_display->Wait();
}

pid_t DisplayServer() {
    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    ucred peer{};
    socklen_t length = sizeof peer;
    const bool known = ::getsockopt(xcb_get_file_descriptor(x), SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0;
    xcb_disconnect(x);
    if (!known)
        throw std::runtime_error("the X server's process is not known");
    return peer.pid;
}

} // namespace kirolane::bench
