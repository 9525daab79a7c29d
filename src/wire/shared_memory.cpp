#include "wire/shared_memory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

namespace kirolane::wire {

namespace {
constexpr int kSeals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
}

SharedMemory SharedMemory::Make(const char* name, std::size_t bytes) {
    Descriptor memory(memfd_create(name, MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!memory.IsOpen() || ftruncate(memory.Get(), static_cast<off_t>(bytes)) != 0 ||
        fcntl(memory.Get(), F_ADD_SEALS, kSeals) != 0)
        return {};
    return {std::move(memory), bytes};
}

SharedMemory SharedMemory::Attach(Descriptor memory, std::size_t bytes) {
    struct stat info {};
    const int seals = fcntl(memory.Get(), F_GET_SEALS);
    if (seals < 0 || (seals & kSeals) != kSeals || fstat(memory.Get(), &info) != 0 ||
        info.st_size < static_cast<off_t>(bytes))
        return {};
    return {std::move(memory), bytes};
}

SharedMemory::SharedMemory(Descriptor memory, std::size_t bytes)
    : m_memory(std::move(memory)), m_bytes(bytes) {
    void* data = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, m_memory.Get(), 0);
    m_data = data == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(data);
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept {
    *this = std::move(other);
}

SharedMemory& SharedMemory::operator=(SharedMemory&& other) noexcept {
    std::swap(m_memory, other.m_memory);
    std::swap(m_data, other.m_data);
    std::swap(m_bytes, other.m_bytes);
    return *this;
}

SharedMemory::~SharedMemory() {
    if (m_data != nullptr)
        munmap(m_data, m_bytes);
}

void SharedMemory::Clear(std::size_t from) const {
    fallocate(m_memory.Get(), FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, static_cast<off_t>(from),
              static_cast<off_t>(m_bytes - from));
}

} // namespace kirolane::wire
