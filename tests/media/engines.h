#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace kirolane::tests {

/// The engines that this process has started and that have not ended.
inline std::vector<pid_t> Engines() {
    std::vector<pid_t> engines;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(entry.path() / "stat");
        std::string number;
        std::string name;
        std::string state;
        pid_t parent = 0;
        if (file >> number >> name >> state >> parent && parent == getpid() && name == "(kirolane-engine)" &&
            state != "Z")
            engines.push_back(static_cast<pid_t>(std::atol(number.c_str())));
    }
    return engines;
}

/// The engine that holds that file; 0 for none.
inline pid_t EngineOf(const std::string& path) {
    std::error_code error;
    for (const pid_t engine : Engines())
        for (const auto& entry :
             std::filesystem::directory_iterator("/proc/" + std::to_string(engine) + "/fd", error))
            if (std::filesystem::read_symlink(entry.path(), error) == path)
                return engine;
    return 0;
}

} // namespace kirolane::tests
