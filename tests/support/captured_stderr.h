#pragma once

#include <string>
#include <vector>

namespace kirolane::tests {

/// Collects what the process writes to standard error while it lives.
class CapturedStderr {
public:
    CapturedStderr();
    ~CapturedStderr();
    CapturedStderr(const CapturedStderr&) = delete;
    CapturedStderr& operator=(const CapturedStderr&) = delete;

    /// The lines so far, without their ends; ends the collecting.
    std::vector<std::string> Lines();

private:
    bool m_collecting = true;
};

} // namespace kirolane::tests
