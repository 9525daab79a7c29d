#pragma once

#include "platform/backend/framesource.h"

#include <mpv/render.h>

#include <condition_variable>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace kirolane::mpv {

/// The pictures of one player: a worker takes each from libmpv's renderer, looked at or not (a player whose
/// pictures nobody takes falls behind), into the back one of two buffers. Calls beyond FrameSource come from
/// the engine, on any thread.
class PicturePath : public FrameSource {
public:
    PicturePath();
    ~PicturePath() override;
    PicturePath(const PicturePath&) = delete;
    PicturePath& operator=(const PicturePath&) = delete;

    void Attach(mpv_render_context* renderer);
    /// Afterwards the renderer is used no more.
    void Detach();

    /// A file is about to be loaded, or unloaded: what is shown is of the file before.
    void Expect();
    /// From here on new pictures are those of the file being loaded.
    void FileStarted();
    /// The renderer has been given the file's first picture.
    void FirstPictureTaken();
    void SetHasPicture(bool has);

    // FrameSource.
    void SetSize(std::int32_t width, std::int32_t height) override;
    void SetListener(std::function<void()> listener) override;
    [[nodiscard]] bool HasFrame() const override;
    [[nodiscard]] bool HasPicture() const override;
    void Visit(const std::function<void(const FrameView&)>& visit) const override;

private:
    struct Free {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };
    struct Buffer {
        std::unique_ptr<std::uint8_t, Free> pixels;
        std::size_t bytes = 0;
        FrameView view;
    };
    enum class Stage : std::uint8_t { None, Expected, Started, Shown };

    void Run();
    /// Takes the next picture of the renderer, if there is one or `again`. True if the back buffer holds it;
    /// `fresh` tells whether it was new to the renderer.
    bool Render(mpv_render_context* renderer, std::int32_t width, std::int32_t height, bool again,
                bool& fresh);
    void Publish();
    void Tell();

    mutable std::mutex m_mutex;
    std::condition_variable m_work;
    std::condition_variable m_rested;
    // Under m_mutex.
    mpv_render_context* m_renderer = nullptr;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    Stage m_stage = Stage::None;
    unsigned m_epoch = 0; ///< grows with each change of stage from outside
    bool m_hasPicture = false;
    bool m_wake = false;  ///< the renderer has something
    bool m_again = false; ///< render what it shows once more
    bool m_first = false; ///< and that is the file's first picture
    bool m_tell = false;
    bool m_busy = false; ///< the worker uses the renderer
    bool m_quit = false;

    Buffer m_back; ///< the worker's
    mutable std::mutex m_frontMutex;
    Buffer m_front; ///< under m_frontMutex
    std::uint64_t m_serial = 0;

    std::mutex m_listenerMutex;
    std::function<void()> m_listener;

    std::thread m_worker;
};

} // namespace kirolane::mpv
