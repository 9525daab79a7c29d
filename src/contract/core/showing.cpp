#include "contract/core/showing.h"

#include "contract/core/forms.h"
#include "contract/window.h"

#include <algorithm>
#include <utility>

namespace kirolane {

void Showing::Mark(Window& window) {
    m_marked.push_back(window.weak_from_this());
}

void Showing::OrderFront(Window& window) {
    WithdrawFront(window);
    m_front.push_back(window.weak_from_this());
}

void Showing::WithdrawFront(const Window& window) {
    std::erase_if(m_front, [&](const std::weak_ptr<Window>& weak) { return weak.lock().get() == &window; });
}

void Showing::Flush(const Forms& forms, bool ended) {
    if (!ended)
        KeepOneWindow(forms);
    HandOverKeyboard(forms);
    for (const auto& weak : std::exchange(m_marked, {}))
        if (const auto window = weak.lock())
            window->BringUpToDate();
    for (const auto& weak : std::exchange(m_front, {}))
        if (const auto window = weak.lock())
            window->BringToFront();
}

void Showing::KeepOneWindow(const Forms& forms) {
    const auto all = forms.All();
    const auto console = forms.First(WindowRole::Console);
    if (console != nullptr &&
        std::none_of(all.begin(), all.end(), [](const auto& form) { return form->TakesKeys(); }))
        console->Show();
}

void Showing::HandOverKeyboard(const Forms& forms) {
    const auto all = forms.All();
    bool lost = false;
    for (const auto& form : all)
        lost = form->LoseKeyboardIfHidden() || lost;
    for (const auto& window : forms.Closed())
        lost = lost || window->Active();
    const bool taken = std::any_of(m_front.begin(), m_front.end(), [](const std::weak_ptr<Window>& weak) {
        const auto window = weak.lock();
        return window != nullptr && !window->Is(WindowRole::Palette);
    });
    if (!lost || taken)
        return;
    const auto next =
        std::find_if(all.begin(), all.end(), [](const auto& form) { return form->TakesKeys(); });
    if (next != all.end())
        OrderFront(**next);
}

} // namespace kirolane
