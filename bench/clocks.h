#pragma once

#include <chrono>
#include <string>

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

/// Processor time of this process so far, all threads, in milliseconds.
double ProcessorMilliseconds();
/// Largest resident memory of this process so far, in MiB.
double PeakMebibytes();

} // namespace kirolane::bench
