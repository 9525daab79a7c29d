#include "engine/service.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

#include <poll.h>

namespace kirolane::engine {

namespace {
/// What Assign's text holds behind two texts for each player.
enum OptionText : std::size_t { AudioOutput, PreviewOutput, AudioFileBase, SoundFont, OptionTexts };
} // namespace

Service::~Service() {
    for (Seat& seat : m_seats)
        seat.engine->Frames()->SetListener({});
}

bool Service::Next(wire::Packet& packet) {
    while (true) {
        switch (m_channel.Receive(packet, true)) {
        case wire::Received::Message:
            return true;
        case wire::Received::Ended:
            return false;
        case wire::Received::Nothing:
            break;
        }
        pollfd channel{m_channel.Get(), POLLIN, 0};
        while (poll(&channel, 1, -1) < 0 && errno == EINTR)
            ;
    }
}

template <class Message> void Service::Answer(const Message& message) const {
    constexpr int kLimit = 1000; // milliseconds
    while (!m_channel.Send(message)) {
        pollfd channel{m_channel.Get(), POLLOUT, 0};
        if (poll(&channel, 1, kLimit) <= 0 || (channel.revents & (POLLHUP | POLLERR)) != 0)
            return;
    }
}

bool Service::TakeAssignment() {
    wire::Packet packet;
    while (Next(packet))
        if (packet.kind == wire::Kind::Assign)
            return Assigned(packet);
        else
            Take(packet);
    return false;
}

bool Service::Assigned(wire::Packet& packet) {
    const auto assign = packet.As<wire::Assign>();
    if (!assign || assign->players > wire::kMostPlayers)
        return false;
    const std::vector<std::string> texts = wire::SplitTexts(packet.Text<wire::Assign>());
    const std::size_t players = assign->players;
    if (texts.size() < 2 * players + OptionTexts)
        return false;
    wire::EngineOptions options;
    for (std::size_t i = 0; i < players; ++i)
        options.roles.push_back({texts[2 * i], assign->roles[i], texts[2 * i + 1]});
    const std::string* text = &texts[2 * players];
    options.audioOutput = text[AudioOutput];
    options.previewOutput = text[PreviewOutput];
    m_outputs = options.audioOutput + "," + options.previewOutput;
    options.audioFileBase = text[AudioFileBase];
    options.soundFont = text[SoundFont];
    options.loadLimit = std::chrono::milliseconds(assign->loadLimit);
    options.seekLimit = std::chrono::milliseconds(assign->seekLimit);
    m_board = wire::Board::Attach(std::move(packet.descriptor));
    if (!m_board.IsThere())
        return false;

    m_media = std::make_unique<mpv::MpvMedia>(options, [this] { WriteBoard(); });
    for (const wire::PlayerRole& role : options.roles)
        m_seats.push_back({m_media->MakePlayer(role.path)});
    for (unsigned i = 0; i < players; ++i) {
        m_seats[i].engine->Frames()->SetListener([this, i] {
            WriteFlags(i);
            if (m_board.Note(i) && !m_channel.Send(wire::Changed{i}))
                m_board.ClearNote(i);
        });
    }
    {
        const std::lock_guard lock(m_boardMutex);
        m_seated = true;
    }
    m_media->Prepare();
    return true;
}

void Service::Run() {
    wire::Packet packet;
    while (Next(packet))
        Take(packet);
}

PlayerEngine* Service::PlayerOf(std::uint32_t number) {
    return number < m_seats.size() ? m_seats[number].engine.get() : nullptr;
}

void Service::Take(wire::Packet& packet) {
    switch (packet.kind) {
    case wire::Kind::Surface:
        TakeSurface(packet);
        break;
    case wire::Kind::Load:
        TakeLoad(packet);
        break;
    case wire::Kind::Release:
        if (const auto release = packet.As<wire::Release>())
            if (PlayerEngine* player = PlayerOf(release->player))
                player->Release();
        break;
    case wire::Kind::Orders:
        if (const auto orders = packet.As<wire::Orders>())
            TakeOrders(*orders);
        break;
    case wire::Kind::Ping:
        WriteBoard(); // takes the players' lock: a conductor that hangs hangs this too
        Answer(wire::Pong{});
        break;
    default:
        break;
    }
}

void Service::TakeSurface(wire::Packet& packet) {
    const auto surface = packet.As<wire::Surface>();
    PlayerEngine* player = surface ? PlayerOf(surface->player) : nullptr;
    if (player == nullptr)
        return;
    std::shared_ptr<wire::SurfaceWriter> writer;
    if (surface->width > 0 && surface->height > 0) {
        const wire::SurfaceLayout layout(surface->width, surface->height);
        auto memory = wire::SharedMemory::Attach(std::move(packet.descriptor), layout.Bytes());
        if (memory.IsThere())
            writer = std::make_shared<wire::SurfaceWriter>(std::move(memory), layout);
    }
    mpv::MpvMedia::SetSurface(*player, std::move(writer));
}

void Service::TakeLoad(wire::Packet& packet) {
    const auto load = packet.As<wire::Load>();
    PlayerEngine* player = load ? PlayerOf(load->player) : nullptr;
    if (player == nullptr)
        return;
    Answer(wire::Begun{load->player, load->number});
    const std::string path = packet.Text<wire::Load>();
    std::string cause;
    const auto medium = wire::Medium::Adopt(std::move(packet.descriptor), path, cause);
    const bool loaded =
        medium != nullptr && mpv::MpvMedia::Load(*player, {.path = path,
                                                           .medium = medium,
                                                           .from = load->from,
                                                           .picture = load->picture,
                                                           .limit = std::chrono::milliseconds(load->limit)});
    WriteBoard();
    Answer(wire::Loaded{load->player, load->number, loaded ? player->Duration() : 0.0});
}

void Service::TakeOrders(const wire::Orders& orders) {
    std::vector<EngineOrder> list;
    for (std::uint32_t i = 0; i < std::min(orders.count, wire::kMostPlayers); ++i) {
        const wire::Order& order = orders.orders[i];
        if (PlayerEngine* player = PlayerOf(order.player))
            list.push_back({player,
                            {.unload = order.unload != 0,
                             .running = order.running != 0,
                             .seekTo = order.seeks != 0 ? std::optional(order.seekTo) : std::nullopt,
                             .rate = order.rate,
                             .volume = order.volume}});
    }
    m_media->Apply(list);
    {
        const std::lock_guard lock(m_boardMutex);
        for (Seat& seat : m_seats)
            seat.order = orders.number;
    }
    WriteBoard();
}

void Service::WriteBoard() {
    const std::lock_guard lock(m_boardMutex);
    if (!m_seated)
        return;
    for (unsigned i = 0; i < m_seats.size(); ++i) {
        wire::Motion motion = mpv::MpvMedia::MotionOf(*m_seats[i].engine);
        motion.order = m_seats[i].order;
        m_board.SetMotion(i, motion);
        WriteFlags(i);
    }
}

void Service::WriteFlags(unsigned player) {
    const std::lock_guard lock(m_flagsMutex);
    const FrameSource& frames = *m_seats[player].engine->Frames();
    m_board.SetFlags(player, (frames.HasFrame() ? wire::kHasFrame : 0) |
                                 (frames.HasPicture() ? wire::kHasPicture : 0));
}

} // namespace kirolane::engine
