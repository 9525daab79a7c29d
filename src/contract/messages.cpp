#include "contract/messages.h"

#include "contract/backend/host.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

namespace kirolane {

namespace {

std::function<void(std::string_view)> lineWriter;

void WriteTo(std::FILE* stream, std::string_view text) {
    std::string line = "kirolane: ";
    line += text;
    std::replace(line.begin(), line.end(), '\n', ' '); // a name with a line break still makes one line
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

} // namespace

void SendErrorLinesTo(std::function<void(std::string_view)> writer) {
    lineWriter = std::move(writer);
}

void WriteErrorLine(std::string_view text) {
    lineWriter ? lineWriter(text) : WriteTo(stderr, text);
}

void WriteLine(std::string_view text) {
    WriteTo(stdout, text);
}

} // namespace kirolane
