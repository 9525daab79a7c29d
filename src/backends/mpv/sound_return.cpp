#include "backends/mpv/sound_return.h"

#include "backends/mpv/player.h"
#include "contract/backend/host.h"

#include <algorithm>
#include <utility>

namespace kirolane::mpv {

namespace {
constexpr std::chrono::seconds kLook{1};
/// For the same devices: a server may be there before the cards it plays on. Each try costs a picture, so the
/// time doubles from one to the next.
constexpr std::chrono::seconds kTryAgain{3};
constexpr std::chrono::seconds kTrySeldom{60};

bool Any(std::span<Player* const> players, Player::Hearing hearing) {
    return std::any_of(players.begin(), players.end(),
                       [&](const Player* player) { return player->GetHearing() == hearing; });
}
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
        Take(LookForSoundDevices(kServerPatience));
        lock.lock();
    }
}

void SoundReturn::Ask() {
    {
        const std::lock_guard lock(m_mutex);
        m_ask = true;
    }
    m_asked.notify_one();
}

void SoundReturn::Take(const SoundDevices& devices) {
    {
        const std::lock_guard lock(m_mutex);
        m_answer = devices;
        m_hangs = devices.Hang();
    }
    m_wake();
}

bool SoundReturn::ServerHangs() const {
    const std::lock_guard lock(m_mutex);
    return m_hangs;
}

std::optional<SoundDevices> SoundReturn::TakeAnswer() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answer, std::nullopt);
}

std::vector<Player*> SoundReturn::Advance(std::span<Player* const> players, TimePoint now) {
    m_deadline.reset();
    if (!Needed())
        return {};
    const auto answer = TakeAnswer();
    std::vector<Player*> heldUp;
    bool doubt = false;
    for (Player* player : players) {
        const auto doubtedFrom = player->DoubtedFrom();
        if (doubtedFrom && *doubtedFrom <= now) {
            if (answer && answer->Hang())
                heldUp.push_back(player);
            else if (answer)
                player->ClearDoubt(now);
            doubt = doubt || !answer;
        } else if (doubtedFrom && (!m_deadline || *doubtedFrom < *m_deadline)) {
            m_deadline = doubtedFrom;
        }
    }

    const bool silent = Any(players, Player::Hearing::Silent);
    if (silent && !std::exchange(m_told, true))
        WriteErrorLine("sound: no device answers; the show goes on without, until one does");
    if (!silent && Any(players, Player::Hearing::Heard))
        m_told = false;
    if (silent != std::exchange(m_silent, silent))
        m_triedWith.reset();
    if (silent && answer && answer->There() && !answer->Hang())
        TakeSoundUp(players, *answer, now);

    if (!silent && !doubt && !ServerHangs()) {
        m_nextLook.reset();
        return heldUp;
    }
    if (!m_nextLook || *m_nextLook <= now) {
        m_nextLook = now + kLook;
        Ask();
    }
    m_deadline = m_deadline ? std::min(*m_deadline, *m_nextLook) : *m_nextLook;
    return heldUp;
}

void SoundReturn::TakeSoundUp(std::span<Player* const> players, const SoundDevices& devices, TimePoint now) {
    const bool others = devices != m_triedWith;
    if (!others && now < m_tried + m_tryAgain)
        return;
    m_tryAgain = others ? kTryAgain : std::min(2 * m_tryAgain, kTrySeldom);
    m_triedWith = devices;
    m_tried = now;
    for (Player* player : players)
        if (player->GetHearing() == Player::Hearing::Silent)
            player->TakeSoundUp(m_outputs);
}

} // namespace kirolane::mpv
