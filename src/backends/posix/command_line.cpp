#include "backends/posix/command_line.h"

#include "backends/posix/posix_folders.h"

#include <string_view>

namespace kirolane::posix {

namespace {

constexpr const char* kVersion = "Kirolane " KIROLANE_VERSION "\n";

constexpr const char* kHelp = R"(Usage: kirolane [FOLDER | FILE]
Plays movies and sounds to an audience, from a console with a preview.

  FOLDER      is listed at the start, as the "?" button lists it
  FILE        has its folder listed and is selected; it is not played
  --help      prints this and ends
  --version   prints the version and ends

More is in the manual page kirolane(1).
)";

} // namespace

CommandLine ReadCommandLine(int argc, const char* const* argv) {
    CommandLine asked;
    bool options = true;
    int operands = 0;
    for (int n = 1; n < argc; ++n) {
        const std::string_view argument = argv[n];
        if (options && argument == "--") {
            options = false;
        } else if (options && argument == "-session") {
            ++n;
        } else if (options && argument.starts_with("-")) {
            if (argument == "--help" || argument == "--version")
                asked.answer = argument == "--help" ? kHelp : kVersion;
            else
                asked.fault = "unknown option " + std::string(argument) + "; --help names all";
            asked.refused = !asked.fault.empty();
            return asked;
        } else if (++operands == 1 && !argument.empty()) {
            asked.path = AbsolutePath(std::string(argument));
        } else {
            asked.fault = argument.empty() ? "an empty name is given for a file or folder"
                                           : "of several files or folders the first counts";
        }
    }
    return asked;
}

} // namespace kirolane::posix
