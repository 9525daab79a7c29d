#include "backends/qt/presenter/x_link.h"

#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kirolane::qt {

namespace {

constexpr std::uint8_t kReadOnly = 1;
constexpr std::uint8_t kDepth = 24;
constexpr std::uint8_t kPixelBits = 32;

template <class T> std::unique_ptr<T, decltype(&std::free)> Owned(T* reply) {
    return {reply, &std::free};
}

} // namespace

std::unique_ptr<XLink> XLink::Open(const std::string& display) {
    int screen = 0;
    auto link = std::unique_ptr<XLink>(new XLink(xcb_connect(display.c_str(), &screen), screen));
    return link->m_screen != nullptr && link->IsLocal() && link->HasOurPixels() && link->TryMemory()
               ? std::move(link)
               : nullptr;
}

XLink::XLink(xcb_connection_t* connection, int screen) : m_connection(connection) {
    if (xcb_connection_has_error(connection) != 0)
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (screens.rem > 1 && screen-- > 0)
        xcb_screen_next(&screens);
    m_screen = screens.data;
}

XLink::~XLink() {
    xcb_disconnect(m_connection);
}

bool XLink::IsLocal() const {
    sockaddr_storage address{};
    socklen_t length = sizeof address;
    const int descriptor = xcb_get_file_descriptor(m_connection);
    return ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) == 0 &&
           address.ss_family == AF_UNIX;
}

bool XLink::HasOurPixels() const {
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    if (m_screen->root_depth != kDepth || setup->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST)
        return false;
    bool wide = false;
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem > 0; xcb_format_next(&it))
        wide = wide || (it.data->depth == kDepth && it.data->bits_per_pixel == kPixelBits);
    for (auto depth = xcb_screen_allowed_depths_iterator(m_screen); depth.rem > 0; xcb_depth_next(&depth))
        for (auto it = xcb_depth_visuals_iterator(depth.data); it.rem > 0; xcb_visualtype_next(&it))
            if (it.data->visual_id == m_screen->root_visual)
                return wide && it.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR &&
                       it.data->red_mask == 0xFF0000 && it.data->green_mask == 0xFF00 &&
                       it.data->blue_mask == 0xFF;
    return false;
}

bool XLink::TryMemory() {
    const auto* extension = xcb_get_extension_data(m_connection, &xcb_shm_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    m_opcode = extension->major_opcode;
    m_completion = extension->first_event + XCB_SHM_COMPLETION;
    const auto version =
        Owned(xcb_shm_query_version_reply(m_connection, xcb_shm_query_version(m_connection), nullptr));
    if (version == nullptr || version->major_version < 1 ||
        (version->major_version == 1 && version->minor_version < 2))
        return false;
    // What stands between the program and the server may know the request and lose the descriptor.
    constexpr std::size_t kLittle = 4096;
    const int memory = ::memfd_create("kirolane-try", MFD_CLOEXEC);
    if (memory < 0 || ::ftruncate(memory, kLittle) != 0) {
        ::close(memory);
        return false;
    }
    const xcb_shm_seg_t segment = xcb_generate_id(m_connection);
    const auto attached = xcb_shm_attach_fd_checked(m_connection, segment, memory, kReadOnly);
    if (Owned(xcb_request_check(m_connection, attached)) != nullptr)
        return false;
    xcb_shm_detach(m_connection, segment);
    return xcb_connection_has_error(m_connection) == 0;
}

bool XLink::IsRefusal(const xcb_generic_error_t& error) const {
    return error.major_code == m_opcode && error.minor_code == XCB_SHM_ATTACH_FD;
}

xcb_shm_seg_t XLink::Attach(int memory) {
    const xcb_shm_seg_t segment = xcb_generate_id(m_connection);
    // The library closes what it has sent.
    xcb_shm_attach_fd(m_connection, segment, ::fcntl(memory, F_DUPFD_CLOEXEC, 0), kReadOnly);
    return segment;
}

} // namespace kirolane::qt
