#include "backends/posix/posix_folders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace kirolane::posix {

namespace {

/// Colon paths hold neither "." nor "..": what ".." leads to is asked of the system. Other paths stay as they
/// are, links included. Without a "/" at the end, but for "/" itself.
std::string WithoutDots(const std::string& path) {
    std::filesystem::path given;
    for (const auto& element : std::filesystem::path(path))
        if (element != "." && !element.empty())
            given /= element;
    if (std::find(given.begin(), given.end(), "..") == given.end())
        return given.native();
    std::error_code error;
    const auto real = std::filesystem::weakly_canonical(given, error);
    std::string plain = (error ? given.lexically_normal() : real).native();
    if (plain.size() > 1 && plain.back() == '/')
        plain.pop_back();
    return plain;
}

} // namespace

std::string HomeFolder() {
    std::string home;
    if (const char* set = std::getenv("HOME"); set != nullptr && *set == '/')
        home = set;
    else if (const passwd* user = ::getpwuid(::getuid()); user != nullptr && user->pw_dir != nullptr)
        home = user->pw_dir;
    home = WithoutDots(home);
    return home.empty() ? "/" : home;
}

std::string AbsolutePath(const std::string& given) {
    std::error_code error;
    return WithoutDots((std::filesystem::current_path(error) / given).native());
}

std::string ExecutableFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path(error).native() : program.parent_path().native();
}

} // namespace kirolane::posix
