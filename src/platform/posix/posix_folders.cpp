#include "platform/posix/posix_folders.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace kirolane::posix {

std::string HomeFolder() {
    std::string home;
    if (const char* set = std::getenv("HOME"); set != nullptr && *set == '/')
        home = set;
    else if (const passwd* user = ::getpwuid(::getuid()); user != nullptr && user->pw_dir != nullptr)
        home = user->pw_dir;
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
