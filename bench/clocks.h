#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kirolane::bench {

/// Milliseconds since its making, on the steady clock.
class StopWatch {
public:
    [[nodiscard]] double Milliseconds() const {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// The processes that this one has started and that have not ended.
std::vector<pid_t> Engines();
/// Processor time of that process so far, all threads, in milliseconds.
double ProcessorMilliseconds(pid_t process);
/// Processor time of this process and its engines so far, all threads, in milliseconds.
double ProcessorMilliseconds();
/// Memory of that process, what it shares with others by its share of it, in MiB.
double SharedOutMebibytes(pid_t process);
/// Memory of this process and its engines, what they share with others by their share of it, in MiB.
double SharedOutMebibytes();

} // namespace kirolane::bench
