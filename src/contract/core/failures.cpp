#include "contract/core/failures.h"

#include "contract/messages.h"

namespace kirolane {

void Failures::NoteFile(const std::string& path, const std::string& cause) {
    m_file = path + ": " + cause;
}

std::string Failures::Report(const std::string& what, const std::string& cause) {
    std::string line = what + ": " + cause;
    if (!m_file.empty())
        line += " (" + m_file + ")";
    WriteErrorLine(line);
    return line;
}

void Failures::SayOnce(std::string text) {
    if (text == m_saidOnce)
        return;
    WriteErrorLine(text);
    m_saidOnce = std::move(text);
}

} // namespace kirolane
