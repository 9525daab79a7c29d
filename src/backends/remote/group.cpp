#include "backends/remote/group.h"

#include <algorithm>

namespace kirolane::remote {

namespace {

std::chrono::milliseconds Until(TimePoint deadline, TimePoint now) {
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now),
                    std::chrono::milliseconds(1));
}

} // namespace

unsigned Group::IndexOf(const Seat& seat) const {
    const auto it =
        std::find_if(seats.begin(), seats.end(), [&seat](const auto& each) { return each.get() == &seat; });
    return static_cast<unsigned>(it - seats.begin());
}

bool Group::HoldsFile() const {
    return std::any_of(seats.begin(), seats.end(), [](const auto& seat) {
        return (seat->medium != nullptr && !seat->ended) || seat->coming != nullptr;
    });
}

bool Group::Returns() const {
    return std::any_of(seats.begin(), seats.end(), [](const auto& seat) { return seat->returns; });
}

bool Group::Assign(const wire::EngineOptions& options, TimePoint now) {
    wire::Assign assign{};
    assign.players = static_cast<std::uint32_t>(seats.size());
    assign.loadLimit = options.loadLimit.count();
    assign.seekLimit = options.seekLimit.count();
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < seats.size(); ++i) {
        assign.roles[i] = seats[i]->role.role;
        texts.push_back(seats[i]->role.path);
        texts.push_back(seats[i]->role.streamName);
    }
    for (const std::string& text :
         {options.audioOutput, options.previewOutput, options.audioFileBase, options.soundFont})
        texts.push_back(text);
    wire::Board board = wire::Board::Make();
    if (!board.IsThere() || !link->Channel().Send(assign, wire::JoinTexts(texts), board.Get()))
        return false;
    link->SetBoard(std::move(board));
    bool sent = true;
    for (const auto& seat : seats)
        sent = sent && SendSurface(*seat);
    sent = sent && SendReturns(options.loadLimit, now) && (Returns() || SendState());
    for (const auto& seat : seats)
        if (seat->loading == Seat::Loading::Wanted)
            sent = sent && SendLoad(*seat, now);
    return sent;
}

bool Group::SendSurface(Seat& seat) {
    if (Board() == nullptr || seat.frames == nullptr)
        return true;
    const wire::SurfaceReader* surface = seat.frames->NewSurface();
    wire::Surface message{IndexOf(seat), 0, 0};
    if (surface == nullptr)
        return link->Channel().Send(message);
    message.width = surface->Layout().width;
    message.height = surface->Layout().height;
    return link->Channel().Send(message, {}, surface->Memory().Get());
}

bool Group::SendLoad(Seat& seat, TimePoint now) {
    const auto limit = Until(seat.deadline, now);
    seat.loading = Seat::Loading::Sent;
    link->Expect(limit, now);
    return link->Channel().Send(wire::Load{IndexOf(seat), seat.number, limit.count(), 0.0, 0.0},
                                seat.coming->File().path, seat.coming->Get());
}

bool Group::SendReturns(std::chrono::milliseconds limit, TimePoint now) {
    std::vector<Seat*> order; // the preview last: it can rest where the audience's player stands
    for (const auto& seat : seats)
        order.push_back(seat.get());
    std::stable_partition(order.begin(), order.end(),
                          [](const Seat* seat) { return seat->role.role != wire::Role::Preview; });
    for (Seat* seat : order) {
        if (!seat->standing || seat->ended || seat->medium == nullptr)
            continue;
        auto& motion = seat->standing->motion;
        const double place = seat->Position(nullptr, 0, now);
        if (motion.rate > 0.0 || seat->goesTo)
            motion.picture = place;
        motion.position = place;
        motion.rate = 0.0;
        seat->goesTo.reset();
        seat->returns = true;
        link->Expect(limit, now);
        const wire::Load load{IndexOf(*seat), ++seat->number, limit.count(), motion.position, motion.picture};
        if (!link->Channel().Send(load, seat->medium->File().path, seat->medium->Get()))
            return false;
    }
    return true;
}

bool Group::SendOrders(std::span<const wire::Order> orders) {
    wire::Orders message{};
    message.number = ++lastOrder;
    for (const wire::Order& order : orders) {
        seats[order.player]->order = lastOrder;
        message.orders[message.count++] = order;
    }
    if (Board() == nullptr || Returns())
        return true;
    return link->Channel().Send(message) && (!HoldsFile() || link->Ask(Clock::now()));
}

bool Group::SendState() {
    std::vector<wire::Order> orders;
    for (unsigned i = 0; i < seats.size(); ++i) {
        Seat& seat = *seats[i];
        if (seat.loading != Seat::Loading::No)
            continue; // its own orders follow
        wire::Order order{};
        order.player = i;
        order.unload = seat.medium == nullptr || seat.ended ? 1 : 0;
        order.running = seat.running ? 1 : 0;
        order.seeks = seat.goesTo ? 1 : 0;
        order.seekTo = seat.goesTo.value_or(0.0);
        order.rate = seat.rate;
        order.volume = seat.volume;
        orders.push_back(order);
        seat.standsUntil = lastOrder + 1;
    }
    return SendOrders(orders);
}

} // namespace kirolane::remote
