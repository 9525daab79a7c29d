#include "clocks.h"

#include <ctime>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace kirolane::bench {

std::vector<pid_t> Engines() {
    std::vector<pid_t> engines;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
        std::ifstream file(entry.path() / "stat");
        pid_t number = 0;
        std::string name;
        std::string state;
        pid_t parent = 0;
        if (file >> number >> name >> state >> parent && parent == getpid() && state != "Z")
            engines.push_back(number);
    }
    return engines;
}

double ProcessorMilliseconds(pid_t process) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0)
        return 0.0;
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double ProcessorMilliseconds() {
    double sum = ProcessorMilliseconds(getpid());
    for (const pid_t engine : Engines())
        sum += ProcessorMilliseconds(engine);
    return sum;
}

double SharedOutMebibytes(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;)
        if (word == "Pss:") {
            double kibibytes = 0.0;
            file >> kibibytes;
            return kibibytes / 1024.0;
        }
    return 0.0;
}

double SharedOutMebibytes() {
    double sum = SharedOutMebibytes(getpid());
    for (const pid_t engine : Engines())
        sum += SharedOutMebibytes(engine);
    return sum;
}

} // namespace kirolane::bench
