#pragma once

#include "wire/descriptor.h"

#include <cstddef>
#include <cstdint>

namespace kirolane::wire {

/// Memory that two processes see, of a size that neither can change: one that could shrink would end whoever
/// reads it. Pages that nobody has written take no room.
class SharedMemory {
public:
    SharedMemory() = default;
    /// Makes and seals it, zeroed. IsThere is false where the system has none to give.
    static SharedMemory Make(const char* name, std::size_t bytes);
    /// What another process has made. IsThere is false if it is not sealed or smaller.
    static SharedMemory Attach(Descriptor memory, std::size_t bytes);

    SharedMemory(SharedMemory&& other) noexcept;
    SharedMemory& operator=(SharedMemory&& other) noexcept;
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    ~SharedMemory();

    [[nodiscard]] bool IsThere() const { return m_data != nullptr; }
    [[nodiscard]] std::uint8_t* Data() const { return m_data; }
    [[nodiscard]] std::size_t Bytes() const { return m_bytes; }
    [[nodiscard]] int Get() const { return m_memory.Get(); }
    /// Gives the pages from there on back to the system; they read 0.
    void Clear(std::size_t from) const;

private:
    SharedMemory(Descriptor memory, std::size_t bytes);

    Descriptor m_memory;
    std::uint8_t* m_data = nullptr;
    std::size_t m_bytes = 0;
};

} // namespace kirolane::wire
