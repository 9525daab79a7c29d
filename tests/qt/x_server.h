#pragma once

#include <QColor>
#include <QRect>

#include <string>
#include <vector>

#include <sys/types.h>
#include <xcb/xcb.h>

namespace kirolane::tests {

/// A virtual screen of the test's own, and eyes that look at it over a connection of theirs.
class XServer {
public:
    explicit XServer(const std::vector<std::string>& options = {});
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// What stands there now, row by row, 0xRRGGBB.
    [[nodiscard]] std::vector<QRgb> Pixels(const QRect& area) const;
    /// The pixel becomes that colour within 5 s, with nobody's help.
    [[nodiscard]] bool Becomes(QPoint at, QColor color) const;
    /// Puts a window of somebody else's over that area; the next call takes it away again.
    void Cover(const QRect& area);
    void Uncover();

private:
    std::string m_name;
    pid_t m_process = -1;
    xcb_connection_t* m_x = nullptr;
    xcb_window_t m_root = 0;
    xcb_window_t m_cover = 0;
};

} // namespace kirolane::tests
