#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

namespace kirolane::tests {

/// Holds up whoever comes by while it is closed.
class Gate {
public:
    /// For what lies below that folder; "" for all.
    void Close(const std::string& below = "");
    /// Everybody who waited has then gone on.
    void Open();
    /// How many wait.
    int Waiting();
    void Pass(const std::string& path = "");

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_below;
    bool m_closed = false;
    int m_waiting = 0;
};

extern Gate mediumGate;  ///< of reads of files and looks at them: a medium that stops answering
extern Gate pictureGate; ///< of pictures that have been rendered

} // namespace kirolane::tests
