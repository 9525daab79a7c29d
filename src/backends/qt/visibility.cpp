#include "backends/qt/visibility.h"

#include "contract/tabpanel.h"

#include <QWidget>

#include <algorithm>
#include <chrono>

namespace kirolane::qt {

namespace {

constexpr std::chrono::seconds kPatience{1};

ControlKind KindOf(const ControlPeer& peer) {
    return peer.Control().Design().kind;
}
bool IsCurtain(const ControlPeer& peer) {
    return KindOf(peer) == ControlKind::Rectangle || KindOf(peer) == ControlKind::Canvas;
}

} // namespace

Visibility::Visibility(const std::vector<std::unique_ptr<ControlPeer>>& peers) {
    for (const auto& peer : peers)
        m_places.push_back({peer.get(), {}});
    for (Place& place : m_places)
        place.pages = PagesOf(place.peer->Control());
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    m_patience.callOnTimeout(this, [this] {
        m_waited = true;
        Update();
    });
    for (const auto& peer : peers)
        peer->OnReady([this] {
            if (m_patience.isActive())
                Update();
        });
}

Visibility::~Visibility() {
    for (const Place& place : m_places)
        place.peer->OnReady({});
}

std::vector<Visibility::Page> Visibility::PagesOf(const RectControl& control) const {
    std::vector<Page> pages;
    const ControlDesign* design = &control.Design();
    while (!design->parent.empty()) {
        const auto parent = std::find_if(m_places.begin(), m_places.end(), [&](const Place& place) {
            return place.peer->Control().Name() == design->parent;
        });
        if (parent == m_places.end())
            break;
        const RectControl& found = parent->peer->Control();
        if (const auto* panel = dynamic_cast<const TabPanel*>(&found); panel != nullptr && design->page != 0)
            pages.push_back({panel, design->page});
        design = &found.Design();
    }
    return pages;
}

void Visibility::Update() {
    bool waiting = false;
    for (const Place& place : m_places) {
        if (IsCurtain(*place.peer))
            continue; // these look at what the players do
        QWidget& widget = place.peer->Widget();
        bool shown = OnShow(place);
        if (shown && widget.isHidden() && !place.peer->ReadyToShow() && !m_waited) {
            waiting = true;
            shown = false;
        }
        widget.setVisible(shown);
    }
    for (const Place& place : m_places) {
        QWidget& widget = place.peer->Widget();
        if (IsCurtain(*place.peer))
            widget.setVisible(OnShow(place) || (waiting && !widget.isHidden()));
    }
    for (const Place& place : m_places)
        place.peer->WindowSettled();
    m_waited = false;
    if (!waiting)
        m_patience.stop();
    else if (!m_patience.isActive())
        m_patience.start();
}

bool Visibility::OnShow(const Place& place) {
    return place.peer->Control().Visible() &&
           std::all_of(place.pages.begin(), place.pages.end(),
                       [](const Page& page) { return page.panel->Value() + 1 == page.number; });
}

bool Visibility::OnShow(const RectControl& control) const {
    return std::any_of(m_places.begin(), m_places.end(), [&](const Place& place) {
        return &place.peer->Control() == &control && OnShow(place);
    });
}

ControlPeer* Visibility::ListOnShow() const {
    for (const Place& place : m_places)
        if (KindOf(*place.peer) == ControlKind::Listbox && OnShow(place))
            return place.peer;
    return nullptr;
}

} // namespace kirolane::qt
