#pragma once

#include <utility>

#include <unistd.h>

namespace kirolane::wire {

/// An open file, closed with the object. -1 for none.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    void Close() {
        if (m_fd >= 0)
            ::close(std::exchange(m_fd, -1));
    }
    [[nodiscard]] bool IsOpen() const { return m_fd >= 0; }
    [[nodiscard]] int Get() const { return m_fd; }

private:
    int m_fd;
};

} // namespace kirolane::wire
