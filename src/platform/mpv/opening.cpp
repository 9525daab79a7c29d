#include "platform/mpv/conductor.h"

#include "platform/common/runtime.h"
#include "platform/mpv/duration_probe.h"

namespace kirolane::mpv {

bool Conductor::Load(Player& player, const std::string& nativePath) {
    std::string cause;
    if (!m_loadDeadline)
        m_loadDeadline = Clock::now() + m_options.loadLimit;
    const auto file = LookAt(nativePath, cause);
    MidiShelf::Item midi;
    if (file && IsMidiFile(*file))
        midi = m_shelf->Get(*file, m_options.soundFont, cause);
    Player* twin = TwinOf(player);
    try {
        Furnish(player);
        if (twin != nullptr)
            Furnish(*twin);
    } catch (const std::exception& e) {
        cause = e.what();
    }
    std::unique_lock lock(m_mutex);
    if (!cause.empty())
        return Fail(player, nativePath, cause);

    // The twin is about to be given the same file: both load side by side.
    const bool both = twin != nullptr && twin->Free() && !twin->Ahead();
    const bool stage = player.GetRole().role == Role::Stage;
    if (!player.Ahead() || player.File() != *file) {
        player.Open(*file, midi, false, both && !stage);
        m_toldOf = {};
    }
    player.Claim();
    if (both) {
        twin->Open(*file, midi, true, stage);
        (stage ? player : *twin).Pictures().Lead((stage ? *twin : player).Pictures());
    }

    const bool answered = m_answered.wait_until(lock, *m_loadDeadline, [&] {
        // What one of the twins can decode need not be waited for in the other.
        const bool decoded =
            player.Decoded() || (twin != nullptr && twin->GetPhase() != Player::Phase::Empty &&
                                 twin->File() == *file && twin->Decoded());
        return !player.Failure().empty() || (player.Described() && decoded);
    });
    if (!answered) {
        try {
            Bury(player.Replace(MakeDeck(player.GetRole())));
        } catch (const std::exception& e) {
            player.Unload();
            return Fail(player, nativePath, e.what());
        }
        return Fail(player, nativePath, "does not answer in time");
    }
    if (!player.Failure().empty()) {
        cause = player.Failure();
        return Fail(player, nativePath, cause);
    }
    const std::string format = player.Format();
    const double told = player.ContainerDuration();
    lock.unlock(); // reading packets takes its time
    if (m_measured.file != *file || m_measured.length.seconds <= 0.0)
        m_measured = {*file, LengthOf(*file, format, told)};
    lock.lock();
    player.Opened(m_measured.length.seconds, m_measured.length.exact, Clock::now());
    lock.unlock();
    Wake();
    return true;
}

bool Conductor::Fail(Player& player, const std::string& path, const std::string& cause) {
    player.Unload();
    const std::string line = path + ": " + cause;
    if (line != m_lastFailure) // once for both twins
        Runtime::WriteLine(line);
    m_lastFailure = line;
    return false;
}

} // namespace kirolane::mpv
