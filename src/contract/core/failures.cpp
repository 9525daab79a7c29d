#include "contract/core/failures.h"

#include "contract/backend/host.h"

#include <algorithm>
#include <cstdio>

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

namespace {
std::function<void(std::string_view)> lineWriter;
}

void SendErrorLinesTo(std::function<void(std::string_view)> writer) {
    lineWriter = std::move(writer);
}

void WriteErrorLine(std::string_view text) {
    if (lineWriter) {
        lineWriter(text);
        return;
    }
    std::string line = "kirolane: ";
    line += text;
    std::replace(line.begin(), line.end(), '\n', ' '); // a name with a line break still makes one line
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

} // namespace kirolane
