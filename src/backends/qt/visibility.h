#pragma once

#include "backends/qt/controlpeer.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace kirolane {
class TabPanel;
}

namespace kirolane::qt {

/// Which of a window's controls are to be seen. A control of a tab page shows only with its page. A player
/// that comes on shows only with its first picture, at the longest a second later: until then the curtain
/// (rectangles and pictures that are to go) stays, and both change in one paint.
class Visibility : public QObject {
public:
    explicit Visibility(const std::vector<std::unique_ptr<ControlPeer>>& peers);
    /// Ahead of the peers: their widgets, and the pictures on the way to them, may outlast both.
    ~Visibility() override;
    Visibility(const Visibility&) = delete;
    Visibility& operator=(const Visibility&) = delete;

    /// Brings every widget's visibility up to date.
    void Update();
    /// The control is wanted and its page in front.
    [[nodiscard]] bool OnShow(const RectControl& control) const;
    /// The list that gets the arrow keys where no other control of the window has use for them; null for
    /// none.
    [[nodiscard]] ControlPeer* ListOnShow() const;

private:
    struct Page {
        const TabPanel* panel;
        int number; ///< one-based
    };
    struct Place {
        ControlPeer* peer;
        std::vector<Page> pages; ///< all of which must be in front
    };

    [[nodiscard]] std::vector<Page> PagesOf(const RectControl& control) const;
    [[nodiscard]] static bool OnShow(const Place& place);

    std::vector<Place> m_places;
    QTimer m_patience;
    bool m_waited = false; ///< the second has passed
};

} // namespace kirolane::qt
