#pragma once

#include "backends/qt/presenter/x_link.h"
#include "contract/backend/framesource.h"

#include <QRect>

#include <cstddef>
#include <cstdint>

namespace kirolane::qt {

/// The picture that a pane shows, in memory that the X server reads: the engine's own if that can be handed
/// on and the picture fits, else a copy. Presenter's thread.
class XPicture {
public:
    XPicture() = default;
    ~XPicture();
    XPicture(const XPicture&) = delete;
    XPicture& operator=(const XPicture&) = delete;

    /// Makes it that picture, stretched to the size; no Put of the one before may be under way. False where
    /// there is no memory.
    bool Take(XLink& x, const FrameView& frame, QSize size);
    [[nodiscard]] bool IsThere() const { return m_segment != XCB_NONE; }
    /// Has the server put that part of it in the same place of a window. Returns the number of the request,
    /// which the event that tells of its end bears.
    std::uint32_t Put(const XLink& x, xcb_window_t window, xcb_gcontext_t graphics, const QRect& part) const;
    /// The server's part of it.
    void Close(const XLink& x);

private:
    bool FitOwn(XLink& x, std::size_t bytes);
    void CloseOwn(const XLink& x);
    void CloseLent(const XLink& x);

    // The copy.
    xcb_shm_seg_t m_own = XCB_NONE;
    std::uint8_t* m_data = nullptr;
    std::size_t m_bytes = 0;
    // The engine's.
    xcb_shm_seg_t m_lent = XCB_NONE;
    std::uint64_t m_lentNumber = 0;
    // What is shown.
    xcb_shm_seg_t m_segment = XCB_NONE; ///< one of the two
    std::uint32_t m_offset = 0;
    std::int32_t m_stride = 0;
    QSize m_size;
};

} // namespace kirolane::qt
