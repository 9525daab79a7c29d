#pragma once

#include "contract/backend/framesource.h"
#include "wire/shared_memory.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace kirolane::wire {

/// Where the pictures of one player lie, all of one size: slots, each owned by the writer, by the mailbox or
/// by the reader, and handed on by one exchange of the mailbox's content. Nobody ever waits.
struct SurfaceLayout {
    /// Of pictures in device pixels, each 1 to 16384.
    SurfaceLayout(std::int32_t wide, std::int32_t high);

    static constexpr unsigned kSlots = 4; ///< reader, mailbox, and two writers: a twin's pictures and its own
    static constexpr std::size_t kFirst = 4096; ///< the mailbox has a page to itself

    std::int32_t width;
    std::int32_t height;
    std::int32_t stride; ///< bytes
    std::size_t slotBytes;

    [[nodiscard]] std::size_t Offset(unsigned slot) const { return kFirst + slot * slotBytes; }
    [[nodiscard]] std::size_t Bytes() const { return Offset(kSlots); }
    [[nodiscard]] FrameView View(const SharedMemory& memory, unsigned slot) const {
        return {memory.Data() + Offset(slot), width, height, stride};
    }
};

/// The reading end, and its maker. What the writer leaves in the memory can be any nonsense.
class SurfaceReader {
public:
    /// IsThere is false where there is no memory for it.
    SurfaceReader(std::int32_t width, std::int32_t height);

    [[nodiscard]] bool IsThere() const { return m_memory.IsThere(); }
    [[nodiscard]] const SurfaceLayout& Layout() const { return m_layout; }
    [[nodiscard]] const SharedMemory& Memory() const { return m_memory; }
    /// Takes the newest picture if there is one since the last call. The slot taken before is the writer's
    /// again. One thread at a time.
    bool Take();
    /// The slot last taken; nothing before the first.
    [[nodiscard]] std::optional<unsigned> Slot() const {
        return m_taken ? std::optional(m_slot) : std::nullopt;
    }
    /// With its memory, to be handed on.
    [[nodiscard]] FrameView View() const;

private:
    SurfaceLayout m_layout;
    SharedMemory m_memory;
    std::uint64_t m_number; ///< of this memory, and of no other
    unsigned m_slot = 0;
    bool m_taken = false;
};

class SurfaceWriter;

/// A slot to draw into, given back to the writer with the object unless it has been shown.
class Slot {
public:
    Slot(std::shared_ptr<SurfaceWriter> surface, unsigned index)
        : m_surface(std::move(surface)), m_index(index) {}
    ~Slot();
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;

    [[nodiscard]] FrameView View() const;
    [[nodiscard]] std::uint8_t* Pixels() const;
    /// It is still to be drawn into, and belongs to that surface.
    [[nodiscard]] bool IsOpenOf(const SurfaceWriter& surface) const {
        return !m_shown && m_surface.get() == &surface;
    }
    /// Hands the picture on; it is only to be looked at from then on, until the next one is shown.
    void Show();

private:
    const std::shared_ptr<SurfaceWriter> m_surface;
    const unsigned m_index;
    bool m_shown = false;
};

/// The writing end. Any thread.
class SurfaceWriter : public std::enable_shared_from_this<SurfaceWriter> {
public:
    SurfaceWriter(SharedMemory memory, const SurfaceLayout& layout);

    [[nodiscard]] const SurfaceLayout& Layout() const { return m_layout; }
    /// Null if all are in use.
    std::shared_ptr<Slot> Take();
    /// Gives the memory of all pictures back to the system.
    void Clear() const { m_memory.Clear(SurfaceLayout::kFirst); }

private:
    friend class Slot;
    void Return(unsigned slot);
    void Show(unsigned slot);

    const SharedMemory m_memory;
    const SurfaceLayout m_layout;
    std::mutex m_mutex;
    std::array<unsigned, SurfaceLayout::kSlots> m_free{3, 2}; ///< a stack; under m_mutex
    unsigned m_freeCount = 2;                                 ///< under m_mutex
};

} // namespace kirolane::wire
