#include "engine_test.h"

#include <fstream>
#include <iterator>

namespace kirolane::tests {

namespace {

using Clock = std::chrono::steady_clock;

mpv::MpvOptions WithRoles(mpv::MpvOptions options) {
    options.roles = {{"preview", mpv::Role::Preview, "Preview"},
                     {"stage", mpv::Role::Stage, "Stage"},
                     {"sound", mpv::Role::Sound, "Sound"}};
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

double SecondsOf(const std::function<void()>& work) {
    const auto began = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - began).count();
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

EngineTest::EngineTest(mpv::MpvOptions options)
    : m_media(std::make_unique<mpv::MpvMedia>(WithRoles(std::move(options)))),
      m_preview(m_media->MakePlayer("preview")), m_stage(m_media->MakePlayer("stage")),
      m_sound(m_media->MakePlayer("sound")) {}

EngineTest::~EngineTest() = default;

void EngineTest::EndPlayers() {
    m_preview.reset();
    m_stage.reset();
    m_sound.reset();
    m_media.reset();
}

void EngineTest::Order(PlayerEngine& engine, const PlayerOrder& order) {
    const EngineOrder orders[] = {{&engine, order}};
    m_media->Apply(orders);
}

void EngineTest::OrderTwins(const PlayerOrder& order) {
    const EngineOrder orders[] = {{m_preview.get(), order}, {m_stage.get(), order}};
    m_media->Apply(orders);
}

void EngineTest::Unload() {
    const PlayerOrder order{.unload = true, .seekTo = {}};
    const EngineOrder orders[] = {{m_preview.get(), order}, {m_stage.get(), order}, {m_sound.get(), order}};
    m_media->Apply(orders);
}

bool EngineTest::WaitUntil(const std::function<bool()>& condition, double seconds) {
    return m_windows.WaitUntil(condition, std::chrono::milliseconds(static_cast<int>(seconds * 1000)));
}

std::optional<int> EngineTest::Grey(PlayerEngine& engine) {
    std::optional<int> grey;
    engine.Frames()->Visit([&](const FrameView& view) {
        grey = view.pixels[static_cast<std::ptrdiff_t>(view.height / 2) * view.stride +
                           static_cast<std::ptrdiff_t>(view.width / 2) * 4 + 1];
    });
    return grey;
}

} // namespace kirolane::tests
