#pragma once

#include <functional>
#include <string_view>

namespace kirolane {

/// One line on standard error: "kirolane: " and the text, whose line breaks become blanks. Any thread.
void WriteErrorLine(std::string_view text);
/// Such lines go there instead, as texts, from now on: an engine's go to whoever runs it. Before the first
/// other thread.
void SendErrorLinesTo(std::function<void(std::string_view)> writer);

/// The same on standard output, for what is no fault.
void WriteLine(std::string_view text);

} // namespace kirolane
