#include "clocks.h"

#include <sys/resource.h>

namespace kirolane::bench {

namespace {
double Milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1000.0 + static_cast<double>(time.tv_usec) / 1000.0;
}

rusage Usage() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage;
}
} // namespace

double ProcessorMilliseconds() {
    const rusage usage = Usage();
    return Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime);
}

double PeakMebibytes() {
    return static_cast<double>(Usage().ru_maxrss) / 1024.0;
}

} // namespace kirolane::bench
