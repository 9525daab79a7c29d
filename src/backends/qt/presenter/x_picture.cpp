#include "backends/qt/presenter/x_picture.h"

#include "backends/qt/picture_painting.h"

#include <QImage>

#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace kirolane::qt {

namespace {
constexpr int kPixelBytes = 4;
}

XPicture::~XPicture() {
    if (m_data != nullptr)
        ::munmap(m_data, m_bytes);
}

bool XPicture::Take(XLink& x, const FrameView& frame, QSize size) {
    const bool fits = QSize(frame.width, frame.height) == size;
    m_size = size;
    if (fits && frame.memory.descriptor >= 0) {
        CloseOwn(x);
        if (m_lent == XCB_NONE || m_lentNumber != frame.memory.number) {
            CloseLent(x);
            m_lent = x.Attach(frame.memory.descriptor);
            m_lentNumber = frame.memory.number;
        }
        m_segment = m_lent;
        m_offset = frame.memory.offset;
        m_stride = frame.stride;
        return true;
    }
    CloseLent(x);
    m_stride = size.width() * kPixelBytes;
    if (!FitOwn(x, static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(size.height())))
        return false;
    m_segment = m_own;
    m_offset = 0;
    if (fits) {
        for (int row = 0; row < size.height(); ++row)
            std::memcpy(m_data + static_cast<std::size_t>(row) * static_cast<std::size_t>(m_stride),
                        frame.pixels + static_cast<std::size_t>(row) * static_cast<std::size_t>(frame.stride),
                        static_cast<std::size_t>(m_stride));
    } else {
        QImage image(m_data, size.width(), size.height(), m_stride, QImage::Format_RGB32);
        QPainter painter(&image);
        PaintStretched(painter, ImageOf(frame), QRect(QPoint(), size));
    }
    return true;
}

std::uint32_t XPicture::Put(const XLink& x, xcb_window_t window, xcb_gcontext_t graphics,
                            const QRect& part) const {
    constexpr std::uint8_t kTell = 1;
    const QRect seen = part & QRect(QPoint(), m_size);
    const auto left = static_cast<std::int16_t>(seen.left());
    const auto top = static_cast<std::int16_t>(seen.top());
    return xcb_shm_put_image(x.Get(), window, graphics, static_cast<std::uint16_t>(m_stride / kPixelBytes),
                             static_cast<std::uint16_t>(m_size.height()), static_cast<std::uint16_t>(left),
                             static_cast<std::uint16_t>(top), static_cast<std::uint16_t>(seen.width()),
                             static_cast<std::uint16_t>(seen.height()), left, top, x.Screen().root_depth,
                             XCB_IMAGE_FORMAT_Z_PIXMAP, kTell, m_segment, m_offset)
        .sequence;
}

void XPicture::Close(const XLink& x) {
    CloseOwn(x);
    CloseLent(x);
    m_segment = XCB_NONE;
}

bool XPicture::FitOwn(XLink& x, std::size_t bytes) {
    if (m_data != nullptr && m_bytes == bytes)
        return true;
    CloseOwn(x);
    const int memory = ::memfd_create("kirolane-shown", MFD_CLOEXEC);
    if (memory < 0)
        return false;
    // Room that is there at once: what is missing later would end the program.
    void* data = ::posix_fallocate(memory, 0, static_cast<off_t>(bytes)) == 0
                     ? ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0)
                     : MAP_FAILED;
    if (data != MAP_FAILED) {
        m_data = static_cast<std::uint8_t*>(data);
        m_bytes = bytes;
        m_own = x.Attach(memory);
    }
    ::close(memory);
    return m_data != nullptr;
}

void XPicture::CloseOwn(const XLink& x) {
    if (m_own != XCB_NONE)
        xcb_shm_detach(x.Get(), std::exchange(m_own, XCB_NONE));
    if (m_data != nullptr)
        ::munmap(std::exchange(m_data, nullptr), m_bytes);
    m_bytes = 0;
}

void XPicture::CloseLent(const XLink& x) {
    if (m_lent != XCB_NONE)
        xcb_shm_detach(x.Get(), std::exchange(m_lent, XCB_NONE));
}

} // namespace kirolane::qt
