#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// Collects what the process writes to standard error while it lives.
class CapturedStderr {
public:
    CapturedStderr() { ::testing::internal::CaptureStderr(); }
    ~CapturedStderr() { Lines(); }
    CapturedStderr(const CapturedStderr&) = delete;
    CapturedStderr& operator=(const CapturedStderr&) = delete;

    /// The lines so far, without their ends; ends the collecting.
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        if (!std::exchange(m_collecting, false))
            return lines;
        std::istringstream text(::testing::internal::GetCapturedStderr());
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

private:
    bool m_collecting = true;
};

} // namespace kirolane::tests
