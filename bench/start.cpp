#include "benchmarks.h"
#include "clocks.h"
#include "folders.h"

#include "contract/exceptions.h"

#include <cstdlib>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::bench {

namespace {
/// From the start of the program to its end, which it meets at its first paint. What it has started itself
/// has gone as well before the next one begins.
double StartToPaint(const std::string& program, const std::string& folder) {
    const StopWatch watch;
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl(program.c_str(), program.c_str(), folder.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw RuntimeException(program + " did not come to its first paint");
    const double milliseconds = watch.Milliseconds();
    while (::waitpid(-1, nullptr, 0) > 0) {
    }
    return milliseconds;
}
} // namespace

std::vector<Row> MeasureStart(const Inputs& inputs) {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    const MemoryFolder memory;
    const std::string folder = memory.MakeFiles("start", 100);
    Samples console;
    Samples empty;
    for (int run = 0; run < 3 * kRuns; ++run) {
        console.Add(StartToPaint(inputs.programs + "/kirolane_start_console", folder));
        empty.Add(StartToPaint(inputs.programs + "/kirolane_start_empty", folder));
    }
    return {RatioRow("start to first paint / empty window", console, empty, "ms", 2.0)};
}

} // namespace kirolane::bench
