#pragma once

#include "camera.h"

#include <cstdint>
#include <memory>

#include <sys/types.h>

namespace kirolane::bench {

/// The least that brings a player's pictures before an audience: a window without a frame, above all others,
/// and one picture of its size in memory that the X server reads.
class Wall {
public:
    /// Throws where the display shares no memory.
    explicit Wall(Area area);
    ~Wall();
    Wall(const Wall&) = delete;
    Wall& operator=(const Wall&) = delete;

    /// Shows the window, black, or takes it away. Comes back when the server has done so.
    void Show();
    void Hide();
    /// Rows of blue, green, red and nothing, without a gap; 64-byte aligned.
    [[nodiscard]] std::uint8_t* Picture() const;
    /// Puts the picture; comes back when the server has read it. Any thread, one at a time.
    void Put();

private:
    struct Display;
    std::unique_ptr<Display> m_display;
};

/// The process of the X server.
pid_t DisplayServer();

} // namespace kirolane::bench
