#pragma once

#include "contract/backend/framesource.h"

#include <QRect>

#include <cstdint>
#include <functional>
#include <memory>

namespace kirolane::qt {

/// Where a player's pictures go, and what is to be seen there.
struct PaneOrder {
    std::uint32_t window = 0; ///< the X server's number of the window that holds the pane
    QRect place;              ///< in it, device pixels
    bool shown = false;
    bool black = true; ///< no picture belongs there
    bool operator==(const PaneOrder&) const = default;
};

/// The place on the screen where the pictures of one player are put without the main thread. Main thread, but
/// where it says otherwise.
class Pane {
public:
    Pane() = default;
    /// Afterwards the pictures are looked at no more, and nothing is told.
    virtual ~Pane() = default;
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    /// Pictures can be put this way; else Qt is to paint them. Any thread.
    [[nodiscard]] virtual bool Works() const = 0;
    virtual void Order(const PaneOrder& order) = 0;
    /// The player has a new picture, or none any more. Any thread.
    virtual void NewPicture() = 0;
};

/// `tell` is called on another thread when Works may have changed, when HasFrame or HasPicture of the
/// pictures has, and with each new picture while the pane is not shown; must only post. Null where Qt paints:
/// on all systems but X11.
std::unique_ptr<Pane> MakePane(FrameSource& frames, std::function<void()> tell);

} // namespace kirolane::qt
