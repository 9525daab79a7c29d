#include "platform/mpv/sound_return.h"

#include "platform/common/runtime.h"
#include "platform/mpv/player.h"

#include <algorithm>

namespace kirolane::mpv {

namespace {
constexpr std::chrono::seconds kLook{1};
/// For the same devices: a server may be there before the cards it plays on.
constexpr std::chrono::seconds kTryAgain{3};
/// A server that is well answers within a millisecond.
constexpr std::chrono::milliseconds kPatience{500};
} // namespace

SoundReturn::SoundReturn(std::string outputs, std::function<void()> wake)
    : m_outputs(std::move(outputs)), m_wake(std::move(wake)), m_looker([this] { Run(); }) {}

SoundReturn::~SoundReturn() {
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_asked.notify_one();
    m_looker.join();
}

void SoundReturn::Run() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_asked.wait(lock, [this] { return m_ask || m_quit; });
        if (m_quit)
            return;
        m_ask = false;
        lock.unlock();
        const SoundDevices devices = LookForSoundDevices(kPatience);
        lock.lock();
        m_answer = devices;
        m_wake();
    }
}

void SoundReturn::Ask() {
    {
        const std::lock_guard lock(m_mutex);
        m_ask = true;
    }
    m_asked.notify_one();
}

std::optional<SoundDevices> SoundReturn::TakeAnswer() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, std::nullopt);
}

void SoundReturn::Advance(std::span<Player* const> players, TimePoint now) {
    const auto answer = TakeAnswer();
    if (m_outputs.find(',') == std::string::npos)
        return;
    const auto any = [&](Player::Hearing hearing) {
        return std::any_of(players.begin(), players.end(),
                           [&](const Player* player) { return player->GetHearing() == hearing; });
    };
    if (!any(Player::Hearing::Silent)) {
        m_nextLook.reset();
        m_told = m_told && !any(Player::Hearing::Heard);
        return;
    }
    if (!m_told)
        Runtime::WriteLine("sound: no device answers; the show goes on without, until one does");
    m_told = true;
    if (!m_nextLook)
        m_triedWith.reset();
    if (answer && answer->There() && !answer->Hang() &&
        (answer != m_triedWith || m_tried + kTryAgain <= now)) {
        m_triedWith = answer;
        m_tried = now;
        for (Player* player : players)
            if (player->GetHearing() == Player::Hearing::Silent)
                player->TakeSoundUp(m_outputs);
    }
    if (!m_nextLook || *m_nextLook <= now) {
        m_nextLook = now + kLook;
        Ask();
    }
}

std::optional<TimePoint> SoundReturn::Deadline() const {
    return m_nextLook;
}

} // namespace kirolane::mpv
