#include "backends/mpv/conductor.h"

#include "backends/mpv/duration_probe.h"
#include "backends/mpv/shared_decoding.h"
#include "backends/mpv/thread_niceness.h"
#include "contract/backend/host.h"
#include "contract/exceptions.h"

namespace kirolane::mpv {

namespace {

constexpr const char* kNoAnswer = "does not answer in time";

/// How long libmpv may take to let go of the file before. One on a medium that does not answer holds it for
/// ever.
constexpr std::chrono::milliseconds kTakeOver{500};

/// A load that has succeeded is answered at the latest so long after its deadline: nobody waits longer.
constexpr std::chrono::milliseconds kLateAnswer{200};

/// What the measuring of a length has on top of its own limit, on a busy machine.
constexpr std::chrono::milliseconds kMeasureGrace{500};

} // namespace

template <class Result>
std::optional<Result> Conductor::Await(std::function<Result()> work, TimePoint deadline) {
    struct Answer {
        std::mutex mutex;
        bool given = false;
        std::optional<Result> result;
    };
    const auto answer = std::make_shared<Answer>();
    RunAside([answer, work = std::move(work), wait = m_loadWait] {
        SetThreadNiceness(kPreviewNiceness); // whatever plays comes first
        std::optional<Result> result;
        try {
            result = work();
        } catch (const std::exception& e) {
            WriteErrorLine(e.what());
        }
        {
            const std::lock_guard lock(answer->mutex);
            answer->given = true;
            answer->result = std::move(result);
        }
        wait->Ring();
    });
    const auto given = [&] {
        const std::lock_guard lock(answer->mutex);
        return answer->given;
    };
    m_loadWait->Until(deadline, given, [this] { ShowPictures(); });
    const std::lock_guard lock(answer->mutex);
    return std::exchange(answer->result, std::nullopt);
}

void Conductor::ShowPictures() {
    std::vector<Player*> playing; // they come and go on this thread
    {
        const std::lock_guard lock(m_mutex);
        std::copy_if(m_players.begin(), m_players.end(), std::back_inserter(playing),
                     [](const Player* player) { return player->Plays(); });
    }
    for (Player* player : playing)
        player->Pictures().Paint();
}

bool Conductor::Load(Player& player, const LoadRequest& request) {
    const std::string& nativePath = request.path;
    if (!m_loadDeadline)
        m_loadDeadline = Clock::now() + request.limit.value_or(m_options.loadLimit);
    // What has been opened ahead has been looked at in this handler.
    const bool opened = player.Ahead() && player.File().path == AbsolutePath(nativePath);
    Look look = opened ? Look{player.GetMedium(), {}} : Looked(request);
    Player* twin = TwinOf(player);
    std::string cause = look.preparation.cause;
    try {
        Furnish(player);
        if (twin != nullptr)
            Furnish(*twin);
        if (cause.empty()) {
            const bool hangs = SoundServerHangs();
            SettleOutputs(player, hangs);
            if (twin != nullptr && twin->Free())
                SettleOutputs(*twin, hangs);
        }
    } catch (const std::exception& e) {
        cause = e.what();
    }
    std::unique_lock lock(m_mutex);
    m_tidyAt.reset();
    if (!cause.empty())
        return Fail(player, nativePath, cause);

    Player& opener = Open(player, look, request);
    lock.unlock();

    const auto taken = [&] {
        const std::lock_guard locked(m_mutex);
        return opener.Taken();
    };
    if (!m_loadWait->Until(m_takeOver, taken, [this] { ShowPictures(); })) {
        // In a player of its own, then; the other comes to its end when its medium lets it.
        try {
            if (opened)
                look = Looked(request);
            if (!look.preparation.cause.empty())
                throw RuntimeException(look.preparation.cause);
            auto deck = MakeDeck(opener.GetRole());
            lock.lock();
            Bury(opener.Replace(std::move(deck)));
            lock.unlock();
            SettleOutputs(opener, m_sound.ServerHangs());
            lock.lock();
        } catch (const std::exception& e) {
            if (!lock.owns_lock())
                lock.lock();
            return Fail(player, nativePath, e.what());
        }
        opener.Open(look.medium, look.preparation, request, &opener != &player);
        for (Player* other : m_players)
            if (other->RestsAt(opener))
                opener.Pictures().Lead(other->Pictures());
        lock.unlock();
    }

    const auto done = [&] {
        const std::lock_guard locked(m_mutex);
        // A picture that has been drawn was decoded, long before libmpv says so: it waits for the sound, too.
        return !opener.Failure().empty() ||
               (opener.Described() && (opener.Decoded() || opener.Pictures().HasFrame()));
    };
    const bool answered = m_loadWait->Until(*m_loadDeadline, done, [this] { ShowPictures(); });
    lock.lock();
    if (!answered && player.Rests()) // the lead is about to be asked for the same, and cleared away
        return Fail(player, nativePath, kNoAnswer);
    if (!answered) {
        try {
            Forsake(player, Clock::now());
            Bury(player.Replace(MakeDeck(player.GetRole())));
        } catch (const std::exception& e) {
            return Fail(player, nativePath, e.what());
        }
        return Fail(player, nativePath, kNoAnswer);
    }
    if (!opener.Failure().empty()) {
        cause = opener.Failure();
        return Fail(player, nativePath, cause);
    }
    const std::string format = opener.Format();
    const double told = opener.ContainerDuration();
    lock.unlock(); // measuring takes its time
    if (m_measured.file != look.medium->File() || m_measured.length.seconds <= 0.0)
        m_measured = {look.medium->File(), Measured(look.medium, format, told)};
    lock.lock();
    player.Opened(format, m_measured.length, Clock::now());
    lock.unlock();
    Wake();
    return true;
}

bool Conductor::SoundServerHangs() {
    if (!m_sound.Needed() || m_sound.ServerHangs())
        return m_sound.ServerHangs();
    const auto look = [] { return LookForSoundDevices(kServerPatience); };
    m_sound.Take(Await<SoundDevices>(look, *m_loadDeadline).value_or(SoundDevices{}));
    return m_sound.ServerHangs();
}

void Conductor::SettleOutputs(Player& player, bool hangs) {
    if (player.GetRole().role == Role::Preview)
        return;
    std::unique_lock lock(m_mutex);
    if (hangs && player.NearDevice()) {
        lock.unlock();
        auto deck = MakeDeck(player.GetRole());
        lock.lock();
        Bury(player.Replace(std::move(deck)));
    }
    player.SetOutputs(hangs ? std::string(kNoOutput) : m_options.audioOutput);
}

Conductor::Look Conductor::Looked(const LoadRequest& request) {
    const auto limit = std::chrono::duration_cast<std::chrono::milliseconds>(*m_loadDeadline - Clock::now());
    const auto work = [request, limit, shelf = m_shelf, font = m_options.soundFont] {
        Look look;
        look.medium =
            request.medium != nullptr ? request.medium : Medium::Open(request.path, look.preparation.cause);
        if (look.medium != nullptr)
            look.preparation = PrepareFile(look.medium, *shelf, font, limit);
        return look;
    };
    Look unanswered;
    unanswered.preparation.cause = kNoAnswer;
    return Await<Look>(work, *m_loadDeadline).value_or(unanswered);
}

Length Conductor::Measured(const MediumPointer& medium, const std::string& format, double told) {
    if (KnowsLength(format, told))
        return {told, true};
    const auto work = [medium, told] { return MeasureLength(medium, told); };
    const TimePoint deadline =
        std::min(std::max(*m_loadDeadline, Clock::now() + kMeasureLimit + kMeasureGrace),
                 *m_loadDeadline + kLateAnswer);
    return Await<Length>(work, deadline).value_or(GuessLength(told));
}

Player& Conductor::Open(Player& player, const Look& look, const LoadRequest& request) {
    const MediaFile& file = look.medium->File();
    Player* twin = TwinOf(player);
    if (player.GetRole().role == Role::Preview && twin != nullptr) {
        const bool free = twin->Free() && !twin->Ahead(); // it is about to be given the same file
        if (free) {
            player.Unload(); // it may rest there still
            twin->Open(look.medium, look.preparation, request, true);
            m_takeOver = Clock::now() + kTakeOver;
            m_toldOf = {};
        }
        if (free || StandsThere(*twin, file, request)) {
            player.OpenAtRest(look.medium, look.preparation, *twin, request.from);
            return *twin;
        }
    }
    if (!player.Ahead() || player.File() != file) {
        Forsake(player, Clock::now());
        player.Open(look.medium, look.preparation, request, false);
        m_takeOver = Clock::now() + kTakeOver;
        m_toldOf = {};
    }
    player.Claim();
    return player;
}

bool Conductor::Fail(Player& player, const std::string& path, const std::string& cause) {
    Abandon(player, Clock::now());
    const std::string line = path + ": " + cause;
    if (line != m_lastFailure) // once for both twins
        WriteErrorLine(line);
    m_lastFailure = line;
    return false;
}

} // namespace kirolane::mpv
