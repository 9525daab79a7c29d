#pragma once

#include <string_view>

namespace kirolane {

/// One line on standard error: "kirolane: " and the text, whose line breaks become blanks. Any thread.
void WriteErrorLine(std::string_view text);

/// The same on standard output, for what is no fault.
void WriteLine(std::string_view text);

} // namespace kirolane
