#include "backends/mpv/conductor.h"

#include "backends/mpv/memory.h"
#include "backends/mpv/shared_decoding.h"
#include "backends/mpv/thread_niceness.h"
#include "contract/backend/host.h"

#include <algorithm>

namespace kirolane::mpv {

namespace {
/// How long the end of the program waits for files that do not answer.
constexpr std::chrono::milliseconds kBurialLimit{500};
} // namespace

Conductor::Conductor(MpvOptions options, std::function<void()> onTurn)
    : m_options(std::move(options)), m_onTurn(std::move(onTurn)), m_listener([this] { Run(); }) {}

void Conductor::Prepare() {
    std::vector<std::packaged_task<std::unique_ptr<Deck>()>> tasks;
    for (const PlayerRole& role : m_options.roles) {
        const auto has = [&](const Player* player) {
            return player->GetRole().path == role.path && player->HasDeck();
        };
        if (std::any_of(m_players.begin(), m_players.end(), has))
            continue;
        tasks.emplace_back([this, &role] { return MakeDeck(role); });
        m_decks[role.path] = tasks.back().get_future();
    }
    m_maker = std::jthread([tasks = std::move(tasks)](const std::stop_token& stop) mutable {
        for (auto& task : tasks)
            if (!stop.stop_requested())
                task();
    });
}

std::unique_ptr<Deck> Conductor::MakeDeck(const PlayerRole& role) const {
    const auto make = [&] {
        if (role.role == Role::Preview)
            SetThreadNiceness(kPreviewNiceness);
        return std::make_unique<Deck>(role, m_options, m_shelf);
    };
    return std::async(std::launch::async, make).get();
}

std::unique_ptr<Deck> Conductor::TakeDeck(const PlayerRole& role) {
    const auto it = m_decks.find(role.path);
    if (it == m_decks.end())
        return MakeDeck(role);
    auto deck = std::move(it->second);
    m_decks.erase(it);
    return deck.get();
}

void Conductor::Furnish(Player& player) {
    if (player.HasDeck())
        return;
    auto deck = TakeDeck(player.GetRole());
    const std::lock_guard lock(m_mutex);
    player.Furnish(std::move(deck));
}

Conductor::~Conductor() {
    {
        const std::lock_guard lock(m_wakeMutex);
        m_quit = true;
    }
    m_wakeUp.notify_one();
    m_listener.join();
    std::unique_lock lock(m_graveyard->mutex);
    m_graveyard->done.wait_for(lock, kBurialLimit, [this] { return m_graveyard->underWay == 0; });
}

void Conductor::Add(Player& player) {
    const std::lock_guard lock(m_mutex);
    m_players.push_back(&player);
}

void Conductor::Remove(Player& player) {
    const std::lock_guard lock(m_mutex);
    std::erase(m_players, &player);
    Forsake(player, Clock::now());
    for (Player* other : m_players)
        other->Pictures().LeaveBehind(player.Pictures());
}

void Conductor::Wake() {
    {
        const std::lock_guard lock(m_wakeMutex);
        m_woken = true;
    }
    m_wakeUp.notify_one();
}

void Conductor::Run() {
    std::optional<TimePoint> deadline;
    while (true) {
        {
            std::unique_lock lock(m_wakeMutex);
            const auto called = [this] { return m_woken || m_quit; };
            if (deadline)
                m_wakeUp.wait_until(lock, *deadline, called);
            else
                m_wakeUp.wait(lock, called);
            if (m_quit)
                return;
            m_woken = false;
        }
        {
            const std::lock_guard lock(m_mutex);
            for (Player* player : m_players)
                player->Drain();
            const TimePoint now = Clock::now();
            for (Player* player : m_players)
                player->TakeTime(now);
            for (Player* player : m_sound.Advance(m_players, now))
                GoOnWithoutDevice(*player, now);
            Advance(now);
            if (m_tidyAt && *m_tidyAt <= now) {
                m_tidyAt.reset();
                for (Player* player : m_players)
                    if (player->GetPhase() == Player::Phase::Empty)
                        player->Pictures().Forget();
                RunAside(GiveMemoryBack);
            }
            deadline = NextDeadline();
        }
        m_loadWait->Ring();
        if (m_onTurn)
            m_onTurn();
    }
}

std::optional<TimePoint> Conductor::NextDeadline() const {
    std::optional<TimePoint> next;
    for (const Player* player : m_players)
        if (const auto deadline = player->Deadline(); deadline && (!next || *deadline < *next))
            next = deadline;
    for (const auto& deadline : {m_sound.Deadline(), m_tidyAt})
        if (deadline && (!next || *deadline < *next))
            next = deadline;
    return next;
}

void Conductor::Apply(std::span<const EngineOrder> orders) {
    {
        const std::lock_guard lock(m_mutex);
        m_loadDeadline.reset(); // the handler is over
        m_lastFailure.clear();
        const TimePoint now = Clock::now();
        for (Player* player : m_players)
            player->Hold(now);
        for (const EngineOrder& each : orders)
            if (auto& player = static_cast<Player&>(*each.engine); each.order.unload && player.Rests())
                player.Unload(); // first: it need not wake
        for (const EngineOrder& each : orders)
            if (each.order.unload) {
                Abandon(static_cast<Player&>(*each.engine), now);
                m_tidyAt = now + kLetGo;
            }
        for (Player* player : m_players)
            if (player->Ahead()) // nobody asked for it after all
                Abandon(*player, now);
        for (const EngineOrder& each : orders)
            static_cast<Player&>(*each.engine).Want(each.order);
        for (Player* player : m_players)
            player->Settle(now);
        ShareDecoding(now);
        std::vector<Player*> starters;
        for (const EngineOrder& each : orders)
            if (auto& player = static_cast<Player&>(*each.engine); player.StartsBy(each.order))
                starters.push_back(&player);
        if (starters.size() > 1) {
            ++m_lastGroup;
            for (Player* player : starters)
                player->SetGroup(m_lastGroup);
        }
        Advance(now);
    }
    Wake(); // for the deadline of a seek
}

void Conductor::Advance(TimePoint now) {
    ShareDecoding(now);
    for (Player* player : m_players)
        player->Advance(player->Group() != 0, now);
    for (Player* player : m_players) {
        if (!player->WantsStart() || !player->Ready())
            continue;
        const unsigned group = player->Group();
        if (group == 0) {
            player->Start();
            continue;
        }
        const auto waits = [group](const Player* other) {
            return other->Group() == group && other->WantsStart();
        };
        if (std::any_of(m_players.begin(), m_players.end(),
                        [&](const Player* other) { return waits(other) && !other->Ready(); }))
            continue;
        std::vector<Player*> together;
        std::copy_if(m_players.begin(), m_players.end(), std::back_inserter(together), waits);
        for (Player* each : together)
            each->Start();
    }
}

void Conductor::GoOnWithoutDevice(Player& player, TimePoint now) {
    try {
        Bury(player.GoOnIn(MakeDeck(player.GetRole()), now));
    } catch (const std::exception& e) {
        TellOnce(player.File(), e.what());
    }
}

void Conductor::ShareDecoding(TimePoint now) {
    for (Player* player : m_players)
        if (player->GetRole().role == Role::Stage)
            if (Player* preview = TwinOf(*player); preview != nullptr)
                mpv::ShareDecoding(*player, *preview, now);
}

void Conductor::Abandon(Player& player, TimePoint now) {
    Forsake(player, now);
    player.Unload();
}

void Conductor::Forsake(const Player& lead, TimePoint now) {
    for (Player* player : m_players)
        if (player->RestsAt(lead))
            player->Wake(player->PictureAt(now), now);
}

Player* Conductor::TwinOf(const Player& player) const {
    const Role role = player.GetRole().role;
    if (role == Role::Sound)
        return nullptr;
    const Role other = role == Role::Stage ? Role::Preview : Role::Stage;
    const auto it = std::find_if(m_players.begin(), m_players.end(),
                                 [other](const Player* twin) { return twin->GetRole().role == other; });
    return it == m_players.end() ? nullptr : *it;
}

void Conductor::TellOnce(const MediaFile& file, const std::string& cause) {
    if (m_toldOf == file)
        return;
    m_toldOf = file;
    WriteErrorLine(file.path + ": " + cause);
}

void Conductor::RunAside(std::function<void()> work) const {
    {
        const std::lock_guard lock(m_graveyard->mutex);
        ++m_graveyard->underWay;
    }
    std::thread([work = std::move(work), graveyard = m_graveyard]() mutable {
        work();
        work = {};
        const std::lock_guard lock(graveyard->mutex);
        --graveyard->underWay;
        graveyard->done.notify_all();
    }).detach();
}

void Conductor::Bury(std::unique_ptr<Deck> deck) {
    RunAside([deck = std::shared_ptr<Deck>(std::move(deck))]() mutable { deck.reset(); });
}

} // namespace kirolane::mpv
