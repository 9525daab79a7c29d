#include "backends/posix/posix_folders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace kirolane::posix {

namespace {

/// Colon paths hold neither "." nor "..": what they lead to is asked of the system. Other paths stay as they
/// are, links included.
std::string WithoutDots(const std::string& path) {
    const std::filesystem::path given(path);
    const bool dots = std::any_of(given.begin(), given.end(),
                                  [](const auto& element) { return element == "." || element == ".."; });
    if (!dots)
        return path;
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(given, error);
    return (error ? given.lexically_normal() : real).native();
}

} // namespace

std::string HomeFolder() {
    std::string home;
    if (const char* set = std::getenv("HOME"); set != nullptr && *set == '/')
        home = set;
    else if (const passwd* user = ::getpwuid(::getuid()); user != nullptr && user->pw_dir != nullptr)
        home = user->pw_dir;
    home = WithoutDots(home);
    while (!home.empty() && home.back() == '/')
        home.pop_back();
    return home.empty() ? "/" : home;
}

std::string ExecutableFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path(error).native() : program.parent_path().native();
}

} // namespace kirolane::posix
