#include "backends/qt/presenter/x_pane.h"

#include <utility>

namespace kirolane::qt {

namespace {

constexpr std::uint8_t kKind = 0x7F; ///< of an event, without the mark of one that was sent

QRect AreaOf(const xcb_expose_event_t& event) {
    return {event.x, event.y, event.width, event.height};
}

} // namespace

XPane::XPane(std::shared_ptr<Presenter> presenter, FrameSource& frames, std::function<void()> tell)
    : m_presenter(std::move(presenter)), m_frames(frames), m_tell(std::move(tell)) {
    m_presenter->Add(*this);
}

void XPane::Order(const PaneOrder& order) {
    {
        const std::lock_guard lock(m_mutex);
        if (order == m_ordered)
            return;
        m_ordered = order;
    }
    m_presenter->Wake();
}

void XPane::NewPicture() {
    if (!m_news.exchange(true))
        m_presenter->Wake();
}

PaneOrder XPane::Ordered() const {
    const std::lock_guard lock(m_mutex);
    return m_ordered;
}

void XPane::Take(const XLink& x, const xcb_generic_event_t& event) {
    const int kind = event.response_type & kKind;
    // A request that fails has no other end.
    if ((kind == x.Completion() || kind == 0) && m_reading == event.full_sequence)
        m_reading.reset();
    if (m_window == XCB_NONE)
        return;
    if (kind == XCB_EXPOSE) {
        const auto& expose = reinterpret_cast<const xcb_expose_event_t&>(event);
        if (expose.window == m_window)
            Show(x, AreaOf(expose));
    } else if (kind == XCB_DESTROY_NOTIFY) {
        const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (destroyed.window != m_window)
            return;
        m_gone = true;
        CloseWindow(x);
    }
}

void XPane::Turn(XLink& x) {
    const bool news = m_news.exchange(false);
    const PaneOrder order = Ordered();
    if (order != m_order) {
        if (order.window != m_order.window) {
            CloseWindow(x);
            m_gone = false;
        }
        m_order = order;
        FollowOrder(x);
        m_due = Due::Anyway;
    } else if (news && m_due == Due::Nothing) {
        m_due = Due::IfNew;
    }
    if (m_mapped)
        Draw(x);
    if (news)
        TellIfNeeded();
}

void XPane::TellIfNeeded() {
    const State now{m_frames.HasFrame(), m_frames.HasPicture()};
    const bool misled = m_order.black == now.hasPicture; // by what was so for a moment
    if (std::exchange(m_told, now) != now || !m_mapped || misled)
        m_tell();
}

void XPane::FollowOrder(const XLink& x) {
    const bool seen = m_order.shown && m_order.window != XCB_NONE && !m_gone && !m_order.place.isEmpty();
    if (!seen) {
        if (std::exchange(m_mapped, false))
            xcb_unmap_window(x.Get(), m_window);
        return;
    }
    if (m_window == XCB_NONE)
        MakeWindow(x);
    const QRect& place = m_order.place;
    const std::uint32_t values[] = {
        static_cast<std::uint32_t>(place.x()), static_cast<std::uint32_t>(place.y()),
        static_cast<std::uint32_t>(place.width()), static_cast<std::uint32_t>(place.height())};
    xcb_configure_window(x.Get(), m_window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    if (!std::exchange(m_mapped, true))
        xcb_map_window(x.Get(), m_window);
}

void XPane::MakeWindow(const XLink& x) {
    const xcb_screen_t& screen = x.Screen();
    m_window = xcb_generate_id(x.Get());
    // Without a background: what was on the screen stays until it is drawn over, whatever comes and goes.
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_NONE, 0,
                                    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                                    screen.default_colormap};
    xcb_create_window(x.Get(), screen.root_depth, m_window, m_order.window, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                      XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    m_graphics = xcb_generate_id(x.Get());
    const std::uint32_t looks[] = {screen.black_pixel, 0};
    xcb_create_gc(x.Get(), m_graphics, m_window, XCB_GC_FOREGROUND | XCB_GC_GRAPHICS_EXPOSURES, looks);
}

void XPane::CloseWindow(const XLink& x) {
    if (m_window == XCB_NONE)
        return;
    xcb_free_gc(x.Get(), m_graphics);
    if (!m_gone)
        xcb_destroy_window(x.Get(), m_window);
    m_window = XCB_NONE;
    m_mapped = false;
}

void XPane::Close(const XLink& x) {
    CloseWindow(x);
    m_picture.Close(x);
}

void XPane::Draw(XLink& x) {
    const QRect all(QPoint(), m_order.place.size());
    if (m_due == Due::Nothing)
        return;
    if (m_order.black) {
        m_due = Due::Nothing;
        m_black = true;
        Show(x, all);
        return;
    }
    if (m_reading.has_value())
        return; // the end of that wakes the presenter
    const bool anyway = std::exchange(m_due, Due::Nothing) == Due::Anyway;
    if (!anyway && !m_frames.HasFrame())
        return; // of a file before: the last picture stays until the first one of the next
    bool drawn = false;
    bool failed = false;
    m_frames.Visit([&](const FrameView& frame) {
        drawn = m_picture.Take(x, frame, all.size());
        failed = !drawn;
    });
    if (failed) {
        m_presenter->Fail();
        return;
    }
    if (!anyway && (!drawn || !m_frames.HasFrame()))
        return; // another file has come between
    m_black = !drawn;
    Show(x, all);
}

void XPane::Show(const XLink& x, const QRect& part) {
    if (m_black) {
        const xcb_rectangle_t area{static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                                   static_cast<std::uint16_t>(part.width()),
                                   static_cast<std::uint16_t>(part.height())};
        xcb_poly_fill_rectangle(x.Get(), m_window, m_graphics, 1, &area);
    } else if (m_picture.IsThere()) {
        m_reading = m_picture.Put(x, m_window, m_graphics, part);
    }
}

} // namespace kirolane::qt
