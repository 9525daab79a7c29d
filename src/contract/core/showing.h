#pragma once

#include <memory>
#include <vector>

namespace kirolane {

class Forms;
class Window;

/// What the windows have been ordered and the screen does not show yet.
class Showing {
public:
    /// That window, or a control of it, has changed.
    void Mark(Window& window);
    /// To be raised at the next showing, after those ordered before.
    void OrderFront(Window& window);
    void WithdrawFront(const Window& window);

    /// Carries it all out. Where nobody would be left with keys the console comes up, and where the window
    /// with the keyboard goes another one gets it.
    void Flush(const Forms& forms, bool ended);

private:
    void KeepOneWindow(const Forms& forms);
    void HandOverKeyboard(const Forms& forms);

    std::vector<std::weak_ptr<Window>> m_marked;
    std::vector<std::weak_ptr<Window>> m_front; ///< in the order of their Show
};

} // namespace kirolane
