#include "contract/core/forms.h"

#include "contract/window.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kirolane {

std::shared_ptr<Window> Forms::Find(std::type_index type) const {
    for (const auto& form : m_forms)
        if (form.type == type)
            return form.window;
    return nullptr;
}

std::shared_ptr<Window> Forms::Make(std::type_index type,
                                    const std::function<std::shared_ptr<Window>()>& make) {
    auto window = make();
    // Known before Open runs: its handlers name the form.
    m_forms.push_back({type, window});
    window->Make();
    return window;
}

std::vector<std::shared_ptr<Window>> Forms::All() const {
    std::vector<std::shared_ptr<Window>> windows;
    windows.reserve(m_forms.size());
    for (const auto& form : m_forms)
        windows.push_back(form.window);
    return windows;
}

std::shared_ptr<Window> Forms::First(WindowRole role) const {
    const auto it =
        std::find_if(m_forms.begin(), m_forms.end(), [&](const Form& form) { return form.window->Is(role); });
    return it == m_forms.end() ? nullptr : it->window;
}

void Forms::Forget(const Window& window) {
    const auto it = std::find_if(m_forms.begin(), m_forms.end(),
                                 [&](const Form& form) { return form.window.get() == &window; });
    if (it == m_forms.end())
        return;
    m_closed.push_back(it->window);
    m_forms.erase(it);
}

bool Forms::DepartClosed() {
    std::move(m_closed.begin(), m_closed.end(), std::back_inserter(m_departed));
    m_closed.clear();
    return !m_departed.empty();
}

void Forms::DropDeparted() {
    std::exchange(m_departed, {}).clear();
}

void Forms::Clear() {
    while (!m_forms.empty()) {
        const auto form = std::move(m_forms.back());
        m_forms.pop_back();
    }
    m_closed.clear();
    m_departed.clear();
}

} // namespace kirolane
