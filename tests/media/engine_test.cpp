#include "engine_test.h"

namespace kirolane::tests {

namespace {
mpv::MpvOptions WithRoles(mpv::MpvOptions options) {
    options.roles = {{"preview", mpv::Role::Preview, "Preview"},
                     {"stage", mpv::Role::Stage, "Stage"},
                     {"sound", mpv::Role::Sound, "Sound"}};
    return options;
}
} // namespace

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

void EngineTest::Unload(std::initializer_list<PlayerEngine*> engines) {
    std::vector<EngineOrder> orders;
    for (PlayerEngine* engine : engines)
        orders.push_back({engine, {.unload = true, .seekTo = {}}});
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
