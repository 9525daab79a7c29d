#pragma once

#include <string>

namespace kirolane::posix {

/// The user's home folder: $HOME if it is an absolute path, else as the system's user list has it; "/" if it
/// has none. Without a trailing "/".
std::string HomeFolder();

/// A path as it was given on the command line, without ".", ".." and a "/" at its end.
std::string AbsolutePath(const std::string& given);

/// The folder in which the running program's file lies.
std::string ExecutableFolder();

} // namespace kirolane::posix
