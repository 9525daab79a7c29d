#pragma once

#include <string>

namespace kirolane::tests {

/// A folder whose medium can stop answering: whoever then reads a file below it, or looks at one, waits. One
/// at a time.
class StalledMedium {
public:
    explicit StalledMedium(const std::string& folder);
    /// It answers again, and everybody who waited has gone on.
    ~StalledMedium();
    StalledMedium(const StalledMedium&) = delete;
    StalledMedium& operator=(const StalledMedium&) = delete;

    void Stall();
    /// How many wait.
    [[nodiscard]] int Waiting() const;
};

} // namespace kirolane::tests
