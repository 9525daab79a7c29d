#pragma once

#include "frame_code.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace kirolane::bench {

/// A rectangle of the screen in pixels.
struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// One grab of the screen.
struct Shot {
    double milliseconds = 0; ///< since the camera's making, when the grab had come back
    double drawn = 0;        ///< on the same clock, when the camera was told of what was drawn
    Sight stage;
    Sight preview; ///< in the same moment, if the camera looks at it
};

/// Looks at areas of the X screen as the audience does, whatever window is there: at every damage that is
/// reported, and in any case more than 60 times a second. Works on a thread and a connection of its own.
class Camera {
public:
    /// `seen` is called on the camera's thread after each shot; must only wake. An empty `preview` is not
    /// looked at.
    Camera(Area stage, Area preview, std::function<void()> seen);
    ~Camera();
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    /// On the clock of the shots.
    [[nodiscard]] double Now() const;
    [[nodiscard]] Shot Newest() const;
    /// All shots since the last call.
    std::vector<Shot> Take();

private:
    struct Screen;
    void Run();

    std::unique_ptr<Screen> m_screen;
    std::function<void()> m_seen;
    mutable std::mutex m_mutex;
    Shot m_newest; ///< under m_mutex, as the next
    std::vector<Shot> m_shots;
    int m_stop = -1; ///< an event to end the thread by
    std::thread m_thread;
};

} // namespace kirolane::bench
