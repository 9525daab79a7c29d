#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <mpv/client.h>
#include <mpv/render.h>

namespace kirolane::bench {

class Wall;

/// The reference of playing: one libmpv player with the options of the audience's player, silent output, its
/// pictures rendered by a thread at 1920 x 1080. Warm: made once, files come and go.
class BarePlayer {
public:
    /// Puts the pictures on that wall of this size, or has nobody look at them.
    explicit BarePlayer(Wall* wall = nullptr);
    ~BarePlayer();
    BarePlayer(const BarePlayer&) = delete;
    BarePlayer& operator=(const BarePlayer&) = delete;

    /// Opens the file, running or halted, and waits for its first picture, rendered and put; milliseconds it
    /// took.
    double Open(const std::string& path, bool running);
    /// Empties the player and waits until it is idle.
    void Close();
    void SetRunning(bool running);
    /// All pictures go through that filter of libavfilter's.
    void SetFilter(const std::string& filter);
    /// Goes exactly to that second of a clip that carries numbers and waits for a rendered picture of that
    /// frame or of one of the next ten; milliseconds it took.
    double Seek(double seconds, int frame);

private:
    void Render();
    void Command(std::vector<const char*> words);

    Wall* m_wall;
    mpv_handle* m_handle = nullptr;
    mpv_render_context* m_context = nullptr;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_update = false;
    bool m_end = false;
    std::uint64_t m_frames = 0;
    std::optional<int> m_awaited; ///< frame that Seek waits for
    std::vector<std::uint8_t> m_pixels;
    std::thread m_worker;
};

} // namespace kirolane::bench
