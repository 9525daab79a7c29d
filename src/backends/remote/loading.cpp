#include "backends/remote/supervisor.h"
#include "contract/backend/host.h"

#include <algorithm>

namespace kirolane::remote {

namespace {

constexpr const char* kNoAnswer = "does not answer in time";

/// What an engine may take on top of the time that it was given before it is taken for hanging.
constexpr std::chrono::milliseconds kGrace{300};

} // namespace

std::shared_ptr<const wire::Medium> Supervisor::Opened(const std::string& path, std::string& cause) {
    if (m_opened != nullptr && m_opened->File().path == path)
        return m_opened; // the twin's, of this very handler
    struct Answer {
        std::mutex mutex;
        bool given = false;
        std::shared_ptr<const wire::Medium> medium;
        std::string cause;
    };
    const auto answer = std::make_shared<Answer>();
    // It is left to itself where the medium does not answer.
    std::thread([answer, path, wait = m_wait] {
        std::string why;
        auto medium = wire::Medium::Open(path, why);
        {
            const std::lock_guard lock(answer->mutex);
            answer->given = true;
            answer->medium = std::move(medium);
            answer->cause = std::move(why);
        }
        wait->Ring();
    }).detach();
    const auto given = [&] {
        const std::lock_guard lock(answer->mutex);
        return answer->given;
    };
    const bool answered = m_wait->Until(*m_loadDeadline, given, [this] { ShowPictures(); });
    const std::lock_guard lock(answer->mutex);
    cause = answered ? answer->cause : kNoAnswer;
    m_opened = answered ? answer->medium : nullptr;
    return m_opened;
}

void Supervisor::ShowPictures() const {
    std::vector<std::shared_ptr<RemoteFrames>> playing; // they come and go on this thread
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& group : m_groups)
            for (const auto& seat : group->seats)
                if (seat->running && seat->frames != nullptr)
                    playing.push_back(seat->frames);
    }
    for (const auto& frames : playing)
        frames->Paint();
}

bool Supervisor::Load(const Place& place, const std::string& nativePath) {
    if (!m_loadDeadline)
        m_loadDeadline = Clock::now() + m_options.loadLimit;
    const std::string path = wire::AbsolutePath(nativePath);
    std::string cause;
    const auto medium = Opened(path, cause);
    std::unique_lock lock(m_mutex);
    Seat& seat = *place.seat;
    const bool returned = place.group->Returns();
    seat.Empty();
    if (!TellReturned(*place.group, returned))
        End(*place.group->link, kTakesNothing, Clock::now());
    const bool refused = m_refused == path;
    lock.unlock();
    if (medium == nullptr || refused)
        return Fail(place, nativePath, cause);

    lock.lock();
    seat.loading = Seat::Loading::Wanted;
    seat.coming = medium;
    seat.lost = 0;
    seat.deadline = *m_loadDeadline;
    ++seat.number;
    const TimePoint now = Clock::now();
    if (place.group->Board() != nullptr && !place.group->SendLoad(seat, now)) {
        seat.loading = Seat::Loading::Wanted;
        End(*place.group->link, kTakesNothing, now);
    }
    lock.unlock();
    Wake();

    const auto answered = [&] {
        const std::lock_guard locked(m_mutex);
        return seat.loading == Seat::Loading::Answered ||
               (place.group->link == nullptr && m_spare == nullptr && m_noStartBefore);
    };
    m_wait->Until(*m_loadDeadline + kGrace, answered, [this] { ShowPictures(); });

    lock.lock();
    if (seat.loading == Seat::Loading::Sent || seat.loading == Seat::Loading::Begun)
        End(*place.group->link, "it does not answer", Clock::now());
    const bool told = seat.loading == Seat::Loading::Answered; // also by its end
    const bool noEngine = place.group->link == nullptr;
    seat.loading = Seat::Loading::No;
    seat.coming.reset();
    if (told && seat.answer > 0.0) {
        seat.medium = medium;
        seat.duration = seat.answer;
        m_toTell.push_back(seat.frames); // its first picture came while it did not count yet
        Wake();
        return true;
    }
    lock.unlock();
    if (told)
        return false; // the engine has emptied the player, or has gone
    return Fail(place, nativePath, noEngine ? "there is no engine to play it" : kNoAnswer);
}

bool Supervisor::Fail(const Place& place, const std::string& path, const std::string& cause) {
    const std::string line = path + ": " + cause;
    if (!cause.empty() && line != m_lastFailure) // once for both twins
        WriteErrorLine(line);
    m_lastFailure = line;
    const std::lock_guard lock(m_mutex);
    wire::Order order{};
    order.player = place.index;
    order.unload = 1;
    order.rate = place.seat->rate;
    order.volume = place.seat->volume;
    if (!place.group->SendOrders({&order, 1}))
        End(*place.group->link, kTakesNothing, Clock::now());
    return false;
}

} // namespace kirolane::remote
