#include "backends/remote/supervisor.h"

#include "contract/backend/host.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>

namespace kirolane::remote {

namespace {

/// A file that ends a second engine within this time of the first is taken for the cause of both.
constexpr std::chrono::seconds kTwiceWithin{10};

/// The spare may hang as well, by the same cause.
constexpr int kMostLost = 2;

constexpr std::size_t kMostIdleEnds = 5;
constexpr std::chrono::seconds kIdleEndsWithin{60};

/// For the process of an engine that has been killed to go; its line is told then.
constexpr std::chrono::seconds kLastWord{1};

/// The supervisor's thread sleeps longer than it wants only if others cannot have run either.
constexpr std::chrono::milliseconds kAsleep{500};

/// At most so many messages of one engine before the others are listened to.
constexpr int kOneTurn = 64;

const std::string kAgainstTheRules = "it does not keep to the rules";
const std::string kIdleEnd = "engine: ended without a file";

std::string Printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    return text;
}

} // namespace

Supervisor::Supervisor(RemoteOptions options)
    : m_options(std::move(options)),
      m_program(m_options.program.empty() ? EngineProgram() : m_options.program),
      m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    for (const wire::PlayerRole& role : m_options.roles) {
        auto seat = std::make_unique<Seat>();
        seat->role = role;
        GroupFor(role).seats.push_back(std::move(seat));
    }
    m_thread = std::thread([this] { Run(); });
}

Supervisor::~Supervisor() {
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    Wake();
    m_thread.join();
}

Group& Supervisor::GroupFor(const wire::PlayerRole& role) {
    for (const auto& group : m_groups)
        if (role.role != wire::Role::Sound && group->seats.size() < wire::kMostPlayers &&
            std::none_of(group->seats.begin(), group->seats.end(), [&role](const auto& seat) {
                return seat->role.role == role.role || seat->role.role == wire::Role::Sound;
            }))
            return *group;
    return *m_groups.emplace_back(std::make_unique<Group>());
}

Place Supervisor::Add(std::string_view path) {
    const std::lock_guard lock(m_mutex);
    Place place;
    for (const auto& group : m_groups)
        for (const auto& seat : group->seats)
            if (seat->role.path == path)
                place = {group.get(), seat.get(), group->IndexOf(*seat)};
    if (place.seat == nullptr) {
        auto seat = std::make_unique<Seat>();
        seat->role = {std::string(path), wire::Role::Stage, std::string(path)};
        Group& group = *m_groups.emplace_back(std::make_unique<Group>());
        place = {&group, seat.get(), 0};
        group.seats.push_back(std::move(seat));
    }
    place.seat->frames = std::make_shared<RemoteFrames>(
        [this, place] {
            const std::lock_guard locked(m_mutex);
            if (!place.group->SendSurface(*place.seat))
                End(*place.group->link, kTakesNothing, Clock::now());
        },
        [this, place] {
            const std::lock_guard locked(m_mutex);
            const std::uint32_t flags = place.seat->Flags(place.group->Board(), place.index);
            TellReturn(*place.seat);
            return flags;
        });
    place.group->SendSurface(*place.seat);
    return place;
}

void Supervisor::Remove(const Place& place) {
    place.seat->frames->SetListener({});
    const SeatOrder order{place, {.unload = true, .seekTo = {}}};
    Apply({&order, 1});
}

void Supervisor::Prepare() {
    {
        const std::lock_guard lock(m_mutex);
        m_prepared = true;
        // A sound takes the spare with its first file: many evenings have none.
        for (const auto& group : m_groups)
            group->wanted = group->seats.front()->role.role != wire::Role::Sound;
    }
    Wake();
}

void Supervisor::Apply(std::span<const SeatOrder> orders) {
    m_loadDeadline.reset(); // the handler is over
    m_opened.reset();
    m_lastFailure.clear();
    const std::lock_guard lock(m_mutex);
    m_refused.clear();
    for (const auto& group : m_groups) {
        std::vector<wire::Order> list;
        const bool returned = group->Returns();
        for (const SeatOrder& each : orders) {
            if (each.place.group != group.get() || list.size() == wire::kMostPlayers)
                continue;
            each.place.seat->TakeOrder(each.order, Clock::now());
            wire::Order order{};
            order.player = each.place.index;
            order.unload = each.order.unload ? 1 : 0;
            order.running = each.order.running ? 1 : 0;
            order.seeks = each.order.seekTo ? 1 : 0;
            order.seekTo = each.order.seekTo.value_or(0.0);
            order.rate = each.order.rate;
            order.volume = each.order.volume;
            list.push_back(order);
        }
        if (!list.empty() && !(group->SendOrders(list) && TellReturned(*group, returned)))
            End(*group->link, kTakesNothing, Clock::now());
    }
    Wake(); // there may be something to be minded
}

void Supervisor::Release(const Place& place) {
    const std::lock_guard lock(m_mutex);
    if (place.group->Board() != nullptr)
        place.group->link->Channel().Send(wire::Release{place.index});
}

double Supervisor::Duration(const Place& place) const {
    const std::lock_guard lock(m_mutex);
    return place.seat->duration;
}

double Supervisor::Position(const Place& place, TimePoint at) const {
    const std::lock_guard lock(m_mutex);
    const double position = place.seat->Position(place.group->Board(), place.index, at);
    TellReturn(*place.seat);
    return position;
}

bool Supervisor::AtEnd(const Place& place) const {
    const std::lock_guard lock(m_mutex);
    const bool atEnd = place.seat->AtEnd(place.group->Board(), place.index);
    TellReturn(*place.seat);
    return atEnd;
}

void Supervisor::TellReturn(Seat& seat) const {
    if (!std::exchange(seat.returned, false))
        return;
    m_toTell.push_back(seat.frames);
    Wake();
}

void Supervisor::Wake() const {
    eventfd_write(m_wake.Get(), 1);
}

void Supervisor::Run() {
    while (true) {
        const auto late = Listen();
        std::vector<std::shared_ptr<RemoteFrames>> toTell;
        bool wantsEngine = false;
        {
            const std::lock_guard lock(m_mutex);
            if (m_quit)
                break;
            const TimePoint now = Clock::now();
            if (late > kAsleep) // stopped like all the others, or on a machine that stood
                for (EngineLink* link : Links())
                    link->Postpone(late);
            for (EngineLink* link : Links()) {
                SoundDoor* door = link->Door();
                if (door != nullptr && door->AnswerOne() && !link->CountCall(now))
                    End(*link, kAgainstTheRules, now);
                else
                    Drain(*link, now);
            }
            Reap(now);
            Tend(now);
            toTell.swap(m_toTell);
            wantsEngine = WantsEngine(now);
        }
        for (const auto& frames : toTell)
            if (frames != nullptr)
                frames->Tell();
        m_wait->Ring();
        if (wantsEngine)
            StartEngine(Clock::now());
    }
    // All of them, at once; the system clears away what is left of them.
    const std::lock_guard lock(m_mutex);
    for (EngineLink* link : Links())
        Bury(link->TakeProcess(), "", Clock::now());
    for (Corpse& corpse : m_corpses) {
        pollfd ended{corpse.process.Watch(), POLLIN, 0};
        poll(&ended, 1, 100);
        corpse.process.Reap();
    }
}

Clock::duration Supervisor::Listen() {
    std::vector<pollfd> watched{{m_wake.Get(), POLLIN, 0}};
    std::optional<TimePoint> deadline;
    {
        const std::lock_guard lock(m_mutex);
        for (EngineLink* link : Links()) {
            watched.push_back({link->Channel().Get(), POLLIN, 0});
            if (const SoundDoor* door = link->Door())
                watched.push_back({door->Get(), POLLIN, 0});
        }
        for (const Corpse& corpse : m_corpses)
            watched.push_back({corpse.process.Watch(), POLLIN, 0});
        deadline = NextDeadline();
    }
    int timeout = -1;
    if (deadline) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now());
        timeout = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    }
    poll(watched.data(), watched.size(), timeout);
    eventfd_t woken = 0;
    eventfd_read(m_wake.Get(), &woken);
    return deadline ? std::max(Clock::now() - *deadline, Clock::duration::zero()) : Clock::duration::zero();
}

std::vector<EngineLink*> Supervisor::Links() const {
    std::vector<EngineLink*> links;
    for (const auto& group : m_groups)
        if (group->link != nullptr)
            links.push_back(group->link.get());
    if (m_spare != nullptr)
        links.push_back(m_spare.get());
    return links;
}

Group* Supervisor::GroupOf(const EngineLink& link) const {
    for (const auto& group : m_groups)
        if (group->link.get() == &link)
            return group.get();
    return nullptr;
}

std::optional<TimePoint> Supervisor::NextDeadline() const {
    std::optional<TimePoint> next;
    const auto add = [&next](const std::optional<TimePoint>& deadline) {
        if (deadline && (!next || *deadline < *next))
            next = deadline;
    };
    for (const EngineLink* link : Links()) {
        const Group* group = GroupOf(*link);
        add(link->Deadline(group != nullptr && group->HoldsFile()));
    }
    for (const Corpse& corpse : m_corpses)
        if (!corpse.line.empty() || corpse.process.Watch() < 0)
            add(corpse.toldBy);
    add(m_noStartBefore);
    return next;
}

void Supervisor::Drain(EngineLink& link, TimePoint now) {
    wire::Packet packet;
    for (int i = 0; i < kOneTurn; ++i) {
        switch (link.Channel().Receive(packet, !link.Boxed())) {
        case wire::Received::Nothing:
            return;
        case wire::Received::Ended:
            End(link, "", now);
            return;
        case wire::Received::Message:
            if (!link.Count(now) || !Take(link, packet, now)) {
                End(link, kAgainstTheRules, now);
                return;
            }
        }
    }
    Wake(); // there may be more
}

bool Supervisor::Take(EngineLink& link, wire::Packet& packet, TimePoint now) {
    Group* group = GroupOf(link);
    const auto seatOf = [&](std::uint32_t player) -> Seat* {
        return group != nullptr && link.Assigned() && player < group->seats.size()
                   ? group->seats[player].get()
                   : nullptr;
    };
    switch (packet.kind) {
    case wire::Kind::Ready:
        if (link.Ready())
            return false;
        link.TakeReady(now);
        return true;
    case wire::Kind::Boxed:
        if (link.Boxed() || !link.Assigned())
            return false;
        link.TakeBoxed(std::move(packet.descriptor));
        TellMissing(packet.Text<wire::Boxed>());
        return true;
    case wire::Kind::Begun:
        if (const auto begun = packet.As<wire::Begun>()) {
            Seat* seat = seatOf(begun->player);
            if (seat == nullptr || !link.Loading())
                return false;
            link.TakeBegun();
            if (seat->number == begun->number && seat->loading == Seat::Loading::Sent)
                seat->loading = Seat::Loading::Begun;
            return true;
        }
        return false;
    case wire::Kind::Loaded:
        if (const auto loaded = packet.As<wire::Loaded>(); loaded && seatOf(loaded->player) != nullptr)
            return TakeLoaded(*group, link, *loaded, now);
        return false;
    case wire::Kind::Changed:
        if (const auto changed = packet.As<wire::Changed>()) {
            Seat* seat = seatOf(changed->player);
            if (seat == nullptr)
                return false;
            link.Board().ClearNote(changed->player);
            link.TakePicture(now);
            if (std::find(m_toTell.begin(), m_toTell.end(), seat->frames) == m_toTell.end())
                m_toTell.push_back(seat->frames);
            return true;
        }
        return false;
    case wire::Kind::Pong:
        link.TakePong(now);
        return true;
    case wire::Kind::Line:
        if (link.CountLine(now))
            WriteErrorLine(Printable(packet.Text<wire::Line>()));
        return true;
    default:
        return false;
    }
}

void Supervisor::TellMissing(const std::string& missing) {
    if (!missing.empty() && missing != m_missing)
        WriteErrorLine(Printable("engine: plays outside its box: " + missing));
    m_missing = missing;
}

bool Supervisor::TakeLoaded(Group& group, EngineLink& link, const wire::Loaded& loaded, TimePoint now) {
    Seat& seat = *group.seats[loaded.player];
    if (!link.Loading() || !std::isfinite(loaded.duration) || loaded.duration < 0.0 ||
        loaded.duration > wire::kLongestFile)
        return false;
    link.TakeLoaded(now);
    if (loaded.number != seat.number)
        return true; // nobody waits for it any more
    if (seat.loading == Seat::Loading::Sent)
        return false; // it has not begun
    if (seat.loading == Seat::Loading::Begun) {
        seat.loading = Seat::Loading::Answered;
        seat.answer = loaded.duration;
    } else if (seat.returns) {
        seat.returns = false;
        seat.ended = loaded.duration == 0.0;
        return TellReturned(group, true);
    }
    return true;
}

bool Supervisor::TellReturned(Group& group, bool returned) {
    return !returned || group.Returns() || group.Board() == nullptr || group.SendState();
}

void Supervisor::End(EngineLink& link, const std::string& why, TimePoint now) {
    Group* group = GroupOf(link);
    std::unique_ptr<EngineLink> ended = std::move(group != nullptr ? group->link : m_spare);
    std::string line;
    if (ended->Assigned() && group->HoldsFile()) {
        line = TakeLoss(*group, ended->Board(), now);
    } else {
        line = kIdleEnd;
        CountIdleEnd(now);
    }
    if (!why.empty())
        line += ": " + why;
    Bury(ended->TakeProcess(), line, now);
    m_wait->Ring();
}

std::string Supervisor::TakeLoss(Group& group, const wire::Board& board, TimePoint now) {
    std::string path;
    bool opening = false;
    for (unsigned i = 0; i < group.seats.size(); ++i) {
        Seat& seat = *group.seats[i];
        seat.Stand(&board, i, now);
        const bool sent = seat.loading == Seat::Loading::Sent;
        if (seat.loading == Seat::Loading::Begun || seat.loading == Seat::Loading::Answered ||
            (sent && seat.lost == kMostLost)) {
            opening = true;
            path = seat.coming->File().path;
            seat.loading = Seat::Loading::Answered;
            seat.answer = 0.0;
            m_refused = path;
        } else if (sent) {
            seat.loading = Seat::Loading::Wanted; // at first it is not the cause
            ++seat.lost;
        } else if (path.empty() && seat.medium != nullptr) {
            path = seat.medium->File().path;
        }
    }
    if (opening) {
        for (const auto& seat : group.seats) // the twin's, of this very handler
            seat->ended = seat->ended || (seat->medium != nullptr && seat->medium->File().path == path);
        return path + ": ended the engine that opened it";
    }
    if (path.empty())
        return kIdleEnd; // it had not begun with any
    const bool twice = path == group.endedWith && now - group.endedAt < kTwiceWithin;
    group.endedWith = path;
    group.endedAt = now;
    if (!twice)
        return path + ": its engine ended; it goes on in another";
    for (const auto& seat : group.seats)
        seat->ended = seat->ended || seat->medium != nullptr;
    return path + ": its engine ended twice; that is the end of it";
}

void Supervisor::CountIdleEnd(TimePoint now) {
    m_idleEnds.push_back(now);
    while (now - m_idleEnds.front() > kIdleEndsWithin)
        m_idleEnds.pop_front();
    if (m_idleEnds.size() < kMostIdleEnds)
        return;
    m_idleEnds.clear();
    m_noStartBefore = now + kIdleEndsWithin;
    WriteErrorLine("engine: ends again and again; none is started for a minute");
}

void Supervisor::Bury(EngineProcess process, std::string line, TimePoint now) {
    process.Kill();
    m_corpses.push_back({std::move(process), std::move(line), now + kLastWord});
}

void Supervisor::Reap(TimePoint now) {
    for (Corpse& corpse : m_corpses) {
        const auto how = corpse.process.Reap();
        if (how && !corpse.line.empty())
            WriteErrorLine(Printable(corpse.line + " (" + *how + ")"));
        else if (!how && now >= corpse.toldBy && !corpse.line.empty())
            WriteErrorLine(Printable(corpse.line));
        else if (!how)
            continue;
        corpse.line.clear();
    }
    std::erase_if(m_corpses, [](const Corpse& corpse) { return !corpse.process.IsThere(); });
}

void Supervisor::Tend(TimePoint now) {
    if (m_noStartBefore && *m_noStartBefore <= now)
        m_noStartBefore.reset();
    for (EngineLink* link : Links()) {
        const Group* group = GroupOf(*link);
        if (link->Hangs(group != nullptr && group->HoldsFile(), now))
            End(*link, "it does not answer", now);
    }
    for (const auto& group : m_groups)
        Furnish(*group, now);
}

void Supervisor::Furnish(Group& group, TimePoint now) {
    if (!group.wanted && !group.HoldsFile())
        return;
    if (group.link == nullptr && m_spare != nullptr)
        group.link = std::move(m_spare);
    if (group.link != nullptr && group.link->Ready() && !group.link->Assigned() &&
        !group.Assign(m_options, now))
        End(*group.link, kTakesNothing, now);
}

bool Supervisor::WantsEngine(TimePoint now) const {
    if (m_quit || (m_noStartBefore && now < *m_noStartBefore))
        return false;
    const auto links = Links();
    if (std::any_of(links.begin(), links.end(), [](const EngineLink* link) { return !link->Ready(); }))
        return false; // one after the other
    const bool missing = std::any_of(m_groups.begin(), m_groups.end(), [](const auto& group) {
        return group->link == nullptr && (group->wanted || group->HoldsFile());
    });
    return m_spare == nullptr && (missing || m_prepared);
}

void Supervisor::StartEngine(TimePoint now) {
    auto [ours, theirs] = wire::Channel::MakePair();
    std::string cause;
    EngineProcess process(m_program, std::move(theirs), cause);
    const std::lock_guard lock(m_mutex);
    if (!process.IsThere()) {
        if (cause != m_startFailure)
            WriteErrorLine("engine: cannot be started: " + cause);
        m_startFailure = cause;
        m_noStartBefore = now + kIdleEndsWithin;
        m_wait->Ring();
        return;
    }
    m_startFailure.clear();
    m_spare = std::make_unique<EngineLink>(std::move(process), wire::Channel(std::move(ours)), now);
    Wake(); // someone may wait for it
}

} // namespace kirolane::remote
