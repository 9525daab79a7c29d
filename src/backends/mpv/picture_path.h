#pragma once

#include "contract/backend/framesource.h"
#include "wire/surface.h"

#include <mpv/render.h>

#include <array>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace kirolane::mpv {

/// The pictures of one player: a worker takes each from libmpv's renderer, looked at or not (a player whose
/// pictures nobody takes falls behind), into the back one of two buffers, or into a surface that another
/// process shows. Calls beyond FrameSource come from the engine, on any thread.
class PicturePath : public FrameSource {
public:
    /// `niceness` of the worker, 0 for that of the program. `onPicture` is called by it after each new
    /// picture; must not wait.
    PicturePath(int niceness, std::function<void()> onPicture);
    ~PicturePath() override;
    PicturePath(const PicturePath&) = delete;
    PicturePath& operator=(const PicturePath&) = delete;

    void Attach(mpv_render_context* renderer);
    /// Afterwards the renderer is used no more.
    void Detach();

    /// A file is about to be loaded, or unloaded: what is shown is of the file before.
    void Expect();
    /// From here on the renderer's new pictures are those of the file being loaded. Ends a rest: the leader's
    /// are shown up to the first of them.
    void FileStarted();
    /// The renderer has been given the file's first picture.
    void FirstPictureTaken();
    /// For a follower that rests, too.
    void SetHasPicture(bool has);

    /// Until the next Expect of one of them: `follower`, which holds the same file, rests and shows this
    /// one's pictures instead of its own. Returns the number of this lead.
    unsigned Lead(PicturePath& follower);
    /// Leads that one no more, which is about to go.
    void LeaveBehind(const PicturePath& follower);

    /// Main thread, while the event loop is held up.
    void Paint() const;
    struct Buffer {
        std::shared_ptr<wire::Slot> slot;     ///< of the surface; else it has pixels of its own:
        std::shared_ptr<std::uint8_t> pixels; ///< a follower's and a visitor's too
        bool lent = false;                    ///< by the leader
        std::size_t bytes = 0;
        FrameView view;
        std::shared_ptr<std::uint8_t> smallPixels; ///< a follower's, if it is far smaller
        FrameView small;
    };
    /// The follower's: the leader's new picture, of that lead. False if there is no use for it.
    bool TakeLead(const Buffer& picture, unsigned lead);

    /// The pictures to come go there, in its size; null: none are asked for.
    void SetSurface(std::shared_ptr<wire::SurfaceWriter> surface);
    [[nodiscard]] bool HasSurface() const;

    // FrameSource.
    void SetSize(std::int32_t width, std::int32_t height) override;
    void SetListener(std::function<void()> listener) override;
    void SetPainter(std::function<void()> paint) override { m_painter = std::move(paint); }
    [[nodiscard]] bool HasFrame() const override;
    [[nodiscard]] bool HasPicture() const override;
    void Visit(const std::function<void(const FrameView&)>& visit) const override;

    /// Lets go of the pictures that it keeps.
    void Forget();

private:
    struct Size {
        std::int32_t width = 0;
        std::int32_t height = 0;
    };
    /// Of the file now loading or loaded.
    enum class Progress : std::uint8_t { None, Expected, Started, Shown };

    /// Whose pictures it shows while it has none of its own.
    enum class Following : std::uint8_t {
        Nobody,
        UntilOwn, ///< the leader's, though its own renderer is at work
        Rests,    ///< the leader's alone
    };
    /// What the worker is to do.
    struct Work {
        bool look = false;  ///< the renderer has something
        bool again = false; ///< draw once more
        bool first = false; ///< draw once more: it is the file's first picture
        bool tell = false;  ///< the listener, without a picture
        bool quit = false;
        [[nodiscard]] bool Any() const { return look || again || first || tell || quit; }
    };

    void Run(int niceness);
    /// One turn of the worker, entered and left with the lock.
    void Turn(std::unique_lock<std::mutex>& lock);
    /// Has the renderer draw its picture. With `again` false only if it has one that it has not drawn yet.
    /// `fresh` tells whether it was a new one. False if nothing was drawn.
    static bool Render(mpv_render_context* renderer, Size size, bool again, Buffer& buffer, bool& fresh,
                       wire::SurfaceWriter* surface);
    void Publish(Buffer& buffer, wire::SurfaceWriter* surface);
    /// Has the buffer hold a picture of that size, in memory that nobody else looks at: the surface's, if it
    /// is of that size. False if there is none; what was in it is gone.
    static bool Fit(Buffer& buffer, Size size, wire::SurfaceWriter* surface = nullptr);
    /// Adds the picture in a follower's size, if that is far smaller.
    void AddSmall(Buffer& picture, Size size);
    /// The worker's; entered and left with the lock.
    void ShowToFollower(std::unique_lock<std::mutex>& lock);
    /// Has the worker draw its picture once more, for a new size or a new follower.
    void DrawAgain();
    /// Large enough for the follower too.
    [[nodiscard]] Size SizeToDraw() const;
    [[nodiscard]] Size WantedSize() const;
    void Tell();

    mutable std::mutex m_mutex;
    std::condition_variable m_work;
    std::condition_variable m_rested;
    // Under m_mutex.
    mpv_render_context* m_renderer = nullptr;
    Size m_size;
    Progress m_progress = Progress::None;
    unsigned m_epoch = 0; ///< grows with each change of progress from outside
    bool m_own = false;   ///< the renderer holds a picture of this file
    bool m_hasPicture = false;
    Following m_following = Following::Nobody;
    unsigned m_lead = 0; ///< counts the leads: a picture may be under way from one that is over
    PicturePath* m_follower = nullptr;
    unsigned m_followerLead = 0; ///< the follower's number of this lead
    std::shared_ptr<wire::SurfaceWriter> m_surface;
    Work m_todo;
    bool m_busy = false; ///< the worker uses the renderer or the follower

    Buffer m_back;                 ///< the worker's
    std::array<Buffer, 3> m_small; ///< the worker's: one shown, one painted, one to draw into
    mutable std::mutex m_frontMutex;
    Buffer m_front; ///< under m_frontMutex

    std::mutex m_listenerMutex;
    std::function<void()> m_listener;
    std::function<void()> m_painter; ///< the main thread's

    const std::function<void()> m_onPicture;
    std::thread m_worker;
};

} // namespace kirolane::mpv
