#include "mpv_harness.h"

#include <fstream>
#include <iterator>

namespace kirolane::tests {

namespace {

using Clock = std::chrono::steady_clock;

mpv::MpvOptions WithRoles(mpv::MpvOptions options) {
    if (options.roles.empty())
        options.roles = {{"PlayerForm.Main", mpv::Role::Stage, "Main"}};
    return options;
}

} // namespace

std::string ClipPath(const std::string& name) {
    return std::string(KIROLANE_CLIPS) + "/" + name;
}

std::string Content(const std::string& clip) {
    std::ifstream file(ClipPath(clip), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

long Status(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == name + ":") {
            long value = 0;
            status >> value;
            return value;
        }
    return 0;
}

void LiveWindows::Wake() {
    HeadlessWindows::Wake();
    {
        const std::lock_guard lock(m_mutex);
        m_woken = true;
    }
    m_wakeUp.notify_all();
}

bool LiveWindows::WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    constexpr std::chrono::milliseconds askAgain{5};
    const auto deadline = Clock::now() + limit;
    while (true) {
        RunReady();
        if (condition())
            return true;
        const auto now = Clock::now();
        if (now >= deadline)
            return false;
        std::unique_lock lock(m_mutex);
        m_wakeUp.wait_until(lock, std::min(deadline, now + askAgain), [this] { return m_woken; });
        m_woken = false;
    }
}

MpvHarness::MpvHarness(mpv::MpvOptions options)
    : PlayerHarness({ClipPath("clip.mp4"), 5.0, ClipPath("short.mp4"), 3.0, 0.25, 0.1}),
      m_media(WithRoles(std::move(options))) {}

bool MpvHarness::WaitUntil(const std::function<bool()>& condition) {
    return m_windows.WaitUntil(condition, std::chrono::seconds(20));
}

double MpvHarness::Now() const {
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

} // namespace kirolane::tests
