#include "support/captured_stderr.h"

#include <sstream>

#include <gtest/gtest.h>

namespace kirolane::tests {

CapturedStderr::CapturedStderr() {
    ::testing::internal::CaptureStderr();
}

CapturedStderr::~CapturedStderr() {
    if (m_collecting)
        ::testing::internal::GetCapturedStderr();
}

std::vector<std::string> CapturedStderr::Lines() {
    std::vector<std::string> lines;
    if (!m_collecting)
        return lines;
    m_collecting = false;
    std::istringstream text(::testing::internal::GetCapturedStderr());
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

} // namespace kirolane::tests
