#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::tests {

/// A pipe with a name, at which sound arrives in samples of 16 bits. It takes a little, and more as it is
/// read.
class Pipe {
public:
    explicit Pipe(const std::string& path) {
        mkfifo(path.c_str(), 0600);
        m_end = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~Pipe() { close(m_end); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    /// Some of what has come, at most a third of a second; none if nothing has.
    std::span<const std::int16_t> Read() {
        const ssize_t bytes = read(m_end, m_samples.data(), sizeof m_samples);
        return std::span(m_samples).first(bytes > 0 ? static_cast<std::size_t>(bytes) / 2 : 0);
    }
    void Drain() {
        while (!Read().empty())
            ;
    }

private:
    int m_end;
    std::array<std::int16_t, 32768> m_samples{};
};

} // namespace kirolane::tests
