#pragma once

#include <string>

namespace kirolane::posix {

/// The user's home folder: $HOME if it is an absolute path, else as the system's user list has it; "/" if it
/// has none. Without a trailing "/".
std::string HomeFolder();

/// The folder in which the running program's file lies.
std::string ExecutableFolder();

} // namespace kirolane::posix
