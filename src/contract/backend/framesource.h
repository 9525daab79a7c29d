#pragma once

#include <cstdint>
#include <functional>

namespace kirolane {

/// Memory that another process can be handed.
struct FrameMemory {
    int descriptor = -1;      ///< its owner's; -1 for none
    std::uint64_t number = 0; ///< its own for good, which a descriptor is not
    std::uint32_t offset = 0; ///< bytes, at which the picture begins
};

/// A finished picture: rows of 32-bit pixels, bytes blue, green, red, and one undefined.
struct FrameView {
    const std::uint8_t* pixels = nullptr;
    std::int32_t width = 0; ///< device pixels
    std::int32_t height = 0;
    std::int32_t stride = 0; ///< bytes from row to row, a multiple of 4
    FrameMemory memory = {}; ///< where the pixels lie in such
};

/// The pictures of one player. They are rendered by a worker of the engine's, stretched to the size asked
/// for; those that come from the player's twin may be of the twin's size, and are to be stretched.
class FrameSource {
public:
    virtual ~FrameSource() = default;

    /// Size of the pictures to come, in device pixels; 0 x 0 asks for none. Main thread.
    virtual void SetSize(std::int32_t width, std::int32_t height) = 0;
    /// Called on the engine's worker after each new picture, and when HasFrame changes; must only post. Main
    /// thread; an empty function stops the calls, and after it returns none is under way.
    virtual void SetListener(std::function<void()> listener) = 0;
    /// `paint` shows the newest picture at once, if that has not been done. Called on the main thread, from
    /// within a Load of another player, which holds the event loop up. Main thread; an empty function stops
    /// the calls.
    virtual void SetPainter(std::function<void()> paint) { static_cast<void>(paint); }
    /// A picture of the file now loaded is at hand. False from a Load to its first picture, and always false
    /// for a file without pictures.
    [[nodiscard]] virtual bool HasFrame() const = 0;
    /// The file now loaded has moving or still pictures.
    [[nodiscard]] virtual bool HasPicture() const = 0;
    /// Shows the newest picture, of the file before where HasFrame is false, to visit, which must not keep
    /// it; it stays as it is meanwhile, in memory that has a descriptor until the next Visit, and new ones do
    /// not wait for that. Nothing if there has been none. Any thread.
    virtual void Visit(const std::function<void(const FrameView&)>& visit) const = 0;
};

} // namespace kirolane
