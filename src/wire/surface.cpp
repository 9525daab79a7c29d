#include "wire/surface.h"

namespace kirolane::wire {

namespace {

constexpr std::size_t kRow = 64;
constexpr std::size_t kPage = 4096;
constexpr std::uint32_t kFresh = 0x80;
constexpr std::uint32_t kIndex = SurfaceLayout::kSlots - 1;
static_assert((SurfaceLayout::kSlots & kIndex) == 0, "any content of the mailbox names a slot");

constexpr std::size_t RoundedUp(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

/// The slot in the mailbox, at first the second one: the reader begins with the first.
std::atomic<std::uint32_t>& Mailbox(const SharedMemory& memory) {
    static_assert(std::atomic<std::uint32_t>::is_always_lock_free);
    return *reinterpret_cast<std::atomic<std::uint32_t>*>(memory.Data());
}

} // namespace

SurfaceLayout::SurfaceLayout(std::int32_t wide, std::int32_t high)
    : width(wide), height(high),
      stride(static_cast<std::int32_t>(RoundedUp(static_cast<std::size_t>(wide) * 4, kRow))),
      slotBytes(RoundedUp(static_cast<std::size_t>(stride) * static_cast<std::size_t>(high), kPage)) {}

SurfaceReader::SurfaceReader(std::int32_t width, std::int32_t height)
    : m_layout(width, height), m_memory(SharedMemory::Make("kirolane-pictures", m_layout.Bytes())) {
    static std::atomic<std::uint64_t> last = 0;
    m_number = ++last;
    if (IsThere())
        Mailbox(m_memory) = 1;
}

bool SurfaceReader::Take() {
    auto& mailbox = Mailbox(m_memory);
    if ((mailbox.load(std::memory_order_relaxed) & kFresh) == 0)
        return false;
    m_slot = mailbox.exchange(m_slot, std::memory_order_acq_rel) & kIndex;
    m_taken = true;
    return true;
}

FrameView SurfaceReader::View() const {
    FrameView view = m_layout.View(m_memory, m_slot);
    view.memory = {m_memory.Get(), m_number, static_cast<std::uint32_t>(m_layout.Offset(m_slot))};
    return view;
}

Slot::~Slot() {
    if (!m_shown)
        m_surface->Return(m_index);
}

FrameView Slot::View() const {
    return m_surface->m_layout.View(m_surface->m_memory, m_index);
}

std::uint8_t* Slot::Pixels() const {
    return m_surface->m_memory.Data() + m_surface->m_layout.Offset(m_index);
}

void Slot::Show() {
    m_shown = true;
    m_surface->Show(m_index);
}

SurfaceWriter::SurfaceWriter(SharedMemory memory, const SurfaceLayout& layout)
    : m_memory(std::move(memory)), m_layout(layout) {}

std::shared_ptr<Slot> SurfaceWriter::Take() {
    const std::lock_guard lock(m_mutex);
    if (m_freeCount == 0)
        return nullptr;
    return std::make_shared<Slot>(shared_from_this(), m_free[--m_freeCount]);
}

void SurfaceWriter::Return(unsigned slot) {
    const std::lock_guard lock(m_mutex);
    if (m_freeCount < m_free.size())
        m_free[m_freeCount++] = slot;
}

void SurfaceWriter::Show(unsigned slot) {
    Return(Mailbox(m_memory).exchange(slot | kFresh, std::memory_order_acq_rel) & kIndex);
}

} // namespace kirolane::wire
