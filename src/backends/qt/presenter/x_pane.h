#pragma once

#include "backends/qt/pane.h"
#include "backends/qt/presenter/presenter.h"
#include "backends/qt/presenter/x_picture.h"

#include <atomic>
#include <mutex>
#include <optional>

namespace kirolane::qt {

/// A pane as a window of the presenter's own, within the one that Qt draws: Qt's painting stops at its edges,
/// and keys and pointer pass through to what lies below.
class XPane final : public Pane {
public:
    XPane(std::shared_ptr<Presenter> presenter, FrameSource& frames, std::function<void()> tell);
    ~XPane() override { m_presenter->Remove(*this); }
    XPane(const XPane&) = delete;
    XPane& operator=(const XPane&) = delete;

    // Pane.
    [[nodiscard]] bool Works() const override { return m_presenter->Works(); }
    void Order(const PaneOrder& order) override;
    void NewPicture() override;

    // For the presenter, which holds its lock.

    void Tell() const { m_tell(); }
    /// An event of the server's, if it is of this pane.
    void Take(const XLink& x, const xcb_generic_event_t& event);
    /// Does what has been ordered and shows what is new.
    void Turn(XLink& x);
    void Close(const XLink& x);

private:
    /// What of the pictures the main thread has to know.
    struct State {
        bool hasFrame = false;
        bool hasPicture = false;
        bool operator==(const State&) const = default;
    };
    enum class Due : std::uint8_t { Nothing, IfNew, Anyway };

    [[nodiscard]] PaneOrder Ordered() const;
    void TellIfNeeded();
    void FollowOrder(const XLink& x);
    void MakeWindow(const XLink& x);
    void CloseWindow(const XLink& x);
    void Draw(XLink& x);
    void Show(const XLink& x, const QRect& part);

    const std::shared_ptr<Presenter> m_presenter;
    FrameSource& m_frames;
    const std::function<void()> m_tell;
    std::atomic<bool> m_news = false;
    mutable std::mutex m_mutex;
    PaneOrder m_ordered; ///< under m_mutex

    // The presenter's.
    PaneOrder m_order; ///< as last followed
    State m_told;
    xcb_window_t m_window = XCB_NONE;
    xcb_gcontext_t m_graphics = XCB_NONE;
    bool m_gone = false; ///< the window has gone with the one that held it
    bool m_mapped = false;
    Due m_due = Due::Nothing;
    bool m_black = true; ///< what is shown is no picture
    XPicture m_picture;
    std::optional<std::uint32_t> m_reading; ///< the server reads the picture: the last request's number
};

} // namespace kirolane::qt
