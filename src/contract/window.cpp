#include "contract/window.h"

#include "contract/application.h"
#include "contract/control_factory.h"
#include "contract/core/runtime.h"
#include "contract/numbers.h"
#include "contract/rectcontrol.h"
#include "contract/screen.h"

#include <algorithm>
#include <utility>

namespace kirolane {

Window::Window(std::string_view name, const WindowDesign& design)
    : m_name(name), m_design(design), m_rect{0, 0, design.width, design.height}, m_title(design.title),
      m_visible(design.visible), m_hasBackColor(design.hasBackColor), m_backColor(design.backColor) {}

Window::~Window() {
    Disown();
}

void Window::Make() {
    const Point place = Runtime::Current().Windows().DefaultPlace(*this);
    m_rect.left = place.left;
    m_rect.top = place.top;
    Layout();
    CreateControls();
    AddMenuHandlers();
    UpdateMenuEnabling();
    Changed();
    Event_Open();
}

void Window::BringUpToDate() {
    m_marked = false;
    auto changed = std::exchange(m_changedControls, {});
    for (RectControl* control : changed)
        control->m_marked = false;
    bool windowToo = std::exchange(m_changed, false);
    if (!m_shown) {
        if (!m_visible)
            return;
        m_shown = true;
        m_peer = Runtime::Current().Windows().MakeWindow(*this);
        changed = RectControls();
        windowToo = true;
    }
    if (m_peer != nullptr)
        m_peer->Update(changed, windowToo);
}

void Window::BringToFront() {
    if (m_visible && m_peer != nullptr)
        m_peer->BringToFront(!Is(WindowRole::Palette));
}

bool Window::TakesKeys() const {
    return m_visible && !Is(WindowRole::Palette) && (m_peer == nullptr || m_peer->HasDisplay());
}

bool Window::LoseKeyboardIfHidden() {
    const bool lost = m_active && !m_visible;
    m_active = m_active && m_visible;
    return lost;
}

void Window::CreateControls(std::span<const ControlDesign> table) {
    for (const ControlDesign& design : table) {
        auto control = MakeControl(*this, design);
        m_byName.emplace(control->Name(), control);
        m_controls.push_back(std::move(control));
    }
}

std::shared_ptr<Control> Window::Find(std::string_view name) const {
    const auto it = m_byName.find(name);
    return it == m_byName.end() ? nullptr : it->second;
}

std::vector<RectControl*> Window::RectControls() const {
    std::vector<RectControl*> controls;
    for (const auto& control : m_controls)
        if (auto* rect = dynamic_cast<RectControl*>(control.get()))
            controls.push_back(rect);
    return controls;
}

void Window::Show() {
    if (m_closed)
        return;
    m_visible = true;
    Changed();
    Runtime::Current().Showing().OrderFront(*this);
}

void Window::Hide() {
    m_visible = false;
    Changed();
    Runtime::Current().Showing().WithdrawFront(*this);
}

void Window::Close() {
    if (m_closed)
        return;
    m_closed = true; // first: the event may call Close
    try {
        Event_Close();
    } catch (...) {
        m_closed = false;
        throw;
    }
    Hide();
    Runtime::Current().Forms().Forget(*this);
}

void Window::SetLeft(std::int32_t left) {
    m_rect.left = left;
    Changed();
}

void Window::SetTop(std::int32_t top) {
    m_rect.top = top;
    Changed();
}

void Window::SetWidth(std::int32_t width) {
    m_rect.width = std::max(width, 0);
    Changed();
}

void Window::SetHeight(std::int32_t height) {
    m_rect.height = std::max(height, 0);
    Changed();
}

void Window::CentreOn(const Screen& screen) {
    SetTop(screen.Top() + ToInteger(screen.Height() / 2.0 - Height() / 2.0));
    SetLeft(screen.Left() + ToInteger(screen.Width() / 2.0 - Width() / 2.0));
}

void Window::SetTitle(std::string title) {
    if (title == m_title)
        return;
    m_title = std::move(title);
    Changed();
}

void Window::SetFullScreen(bool fullScreen) {
    m_fullScreen = fullScreen;
    Changed();
}

void Window::SetMenuBarVisible(bool visible) {
    m_menuBarVisible = visible;
    Changed();
}

void Window::SetBackColor(Color color) {
    m_backColor = color;
    Changed();
}

void Window::SetHasBackColor(bool on) {
    m_hasBackColor = on;
    Changed();
}

void Window::Disown() {
    if (m_menuBar != nullptr)
        m_menuBar->ForEach([](class MenuItem& item) { item.m_owner = nullptr; });
}

void Window::SetMenuBar(const class MenuBar& bar) {
    Disown();
    m_menuBar = bar.Clone();
    m_menuBar->ForEach([this](class MenuItem& item) { item.m_owner = this; });
    Changed();
}

Ref<MenuItem> Window::MenuItem(std::string_view name) const {
    return m_menuBar == nullptr ? Ref<class MenuItem>() : m_menuBar->Item(name);
}

void Window::BindMenu(std::string_view itemName, std::function<bool()> handler) {
    m_menuHandlers.insert_or_assign(std::string(itemName), std::move(handler));
}

bool Window::HasMenuHandler(std::string_view itemName) const {
    return m_menuHandlers.find(itemName) != m_menuHandlers.end();
}

void Window::UpdateMenuEnabling() {
    if (m_menuBar == nullptr)
        return;
    m_menuBar->ForEach([this](class MenuItem& item) {
        const bool menu = !item.Children().empty();
        const bool quit = item.Role() == MenuRole::Quit;
        item.SetEnabled(menu || (item.AutoEnable() && (quit || HasMenuHandler(item.Name()))));
    });
    Event_EnableMenuItems();
}

void Window::ReportMoved(std::int32_t left, std::int32_t top) {
    if (m_fullScreen || (m_rect.left == left && m_rect.top == top))
        return;
    if (Runtime::Current().Modal()) {
        m_rect.left = left;
        m_rect.top = top;
    }
    Runtime::Current().Deliver(*this, m_name + " Moved", [this, left, top] {
        m_rect.left = left;
        m_rect.top = top;
        Event_Moved();
    });
}

void Window::ReportActivated() {
    if (Runtime::Current().Modal())
        m_active = true;
    Runtime::Current().Deliver(*this, m_name + " Activate", [this] {
        m_active = true;
        UpdateMenuEnabling();
        Event_Activate();
    });
}

void Window::ReportDeactivated() {
    if (Runtime::Current().Modal())
        m_active = false;
    Runtime::Current().Deliver(*this, m_name + " Deactivate", [this] {
        m_active = false;
        Event_Deactivate();
    });
}

void Window::ReportRestored() {
    Runtime::Current().Deliver(*this, m_name + " Restore", [this] { Event_Restore(); });
}

void Window::ReportCloseRequested() {
    if (!m_design.closeButton)
        return;
    Runtime::Current().Deliver(*this, m_name + " Close", [this] {
        if (Is(WindowRole::Palette))
            Hide();
        else
            Close();
    });
}

void Window::ReportEscape() {
    if (!Is(WindowRole::Dialog))
        return;
    if (m_design.closeButton)
        ReportCloseRequested();
    else
        Runtime::Current().Deliver(*this, m_name + " Escape", [this] { Hide(); });
}

void Window::ReportMenuChosen(std::string_view itemName) {
    Runtime::Current().Deliver(*this, m_name + " " + std::string(itemName),
                               [this, name = std::string(itemName)] {
                                   UpdateMenuEnabling();
                                   const auto item = MenuItem(name);
                                   if (item.IsNil() || !item->Enabled())
                                       return;
                                   const auto handler = m_menuHandlers.find(name);
                                   if (handler != m_menuHandlers.end())
                                       handler->second();
                                   else if (item->Role() == MenuRole::Quit)
                                       Quit(0);
                               });
}

bool Window::HasLostScreen() const {
    const Point middle{m_rect.left + m_rect.width / 2, m_rect.top + m_rect.height / 2};
    const auto screens = Runtime::Current().Windows().Screens();
    if (std::none_of(screens.begin(), screens.end(), [&](const Rect& rect) { return rect.Holds(middle); }))
        return true;
    const auto forms = Runtime::Current().Forms().All();
    return std::any_of(forms.begin(), forms.end(), [&](const auto& form) {
        const Rect covered = form->m_peer == nullptr ? Rect{} : form->m_peer->CoveredScreen();
        return covered.Holds(middle) && covered != screens.front();
    });
}

void Window::FollowScreens() {
    if (m_fullScreen) {
        const Rect covered = m_peer == nullptr ? Rect{} : m_peer->CoveredScreen();
        if (covered != Rect{})
            Runtime::Current().Deliver(*this, m_name + " ScreenChanged", [this, covered] {
                Event_ScreenChanged(covered.width, covered.height);
            });
    } else if (!Is(WindowRole::Audience) && HasLostScreen()) {
        Runtime::Current().Deliver(*this, m_name + " Moved", [this] {
            if (Is(WindowRole::Dialog)) {
                CentreOn(Screen(0));
            } else {
                const Point home = Runtime::Current().Windows().DefaultPlace(*this);
                SetLeft(home.left);
                SetTop(home.top);
            }
            Event_Moved();
        });
    }
}

void Window::MarkControl(RectControl& control) {
    control.m_marked = true;
    m_changedControls.push_back(&control);
    if (!m_marked) {
        m_marked = true;
        Runtime::Current().Showing().Mark(*this);
    }
}

void Window::Changed() {
    m_changed = true;
    if (!m_marked) {
        m_marked = true;
        Runtime::Current().Showing().Mark(*this);
    }
}

} // namespace kirolane
