#pragma once

#include <string>

namespace kirolane::posix {

/// What the command line asks for.
struct CommandLine {
    std::string path;   ///< the file or folder to begin with, absolute; "" for none
    std::string answer; ///< text for standard output, instead of a start
    std::string fault;  ///< one line; where it ends the start, `refused` is set
    bool refused = false;
};

/// To be called before others take their options out of argv. A session manager's "-session ID" is let
/// through, for the windowing back end.
CommandLine ReadCommandLine(int argc, const char* const* argv);

} // namespace kirolane::posix
