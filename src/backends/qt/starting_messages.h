#pragma once

#include <string>

namespace kirolane::qt {

/// Ends the process with status 1 and one line on standard error: there is nothing to show windows on.
[[noreturn]] void RefuseDesktop(const std::string& cause);

/// Lives while the application object is made. Where Qt gives up, as it does without a display, the process
/// ends with status 1 after one line on standard error, and not by a crash. What else Qt says meanwhile is
/// passed on at the end. One at a time.
class StartingMessages {
public:
    StartingMessages();
    ~StartingMessages();
    StartingMessages(const StartingMessages&) = delete;
    StartingMessages& operator=(const StartingMessages&) = delete;
};

} // namespace kirolane::qt
