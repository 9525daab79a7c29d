#pragma once

#include "backends/headless/headless.h"
#include "backends/mpv/mpv_media.h"
#include "support/player_harness.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

namespace kirolane::tests {

/// Path of one of the clips that make_clips.sh makes.
std::string ClipPath(const std::string& name);

std::string Content(const std::string& clip);

/// A figure of /proc/self/status, 0 where there is none.
long Status(const std::string& name);

/// Headless windows whose time is the real one: a wake comes through to whoever waits.
class LiveWindows : public headless::HeadlessWindows {
public:
    using HeadlessWindows::HeadlessWindows;

    void Wake() override;
    /// Runs what is posted, as it comes, until the condition holds; asked every few milliseconds. False after
    /// the limit.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);

private:
    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_woken = false;
};

class MpvHarness : public PlayerHarness {
public:
    /// The role of the suite's player is added to the options.
    explicit MpvHarness(mpv::MpvOptions options = {});

    MediaEngine& Media() override { return m_media; }
    WindowSystem& Windows() override { return m_windows; }
    bool WaitUntil(const std::function<bool()>& condition) override;
    [[nodiscard]] double Now() const override;

private:
    headless::HandClock m_clock;
    LiveWindows m_windows{m_clock};
    mpv::MpvMedia m_media;
};

} // namespace kirolane::tests
