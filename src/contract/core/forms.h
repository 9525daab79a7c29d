#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <typeindex>
#include <vector>

namespace kirolane {

class Window;
enum class WindowRole : std::uint8_t;

/// The forms that are open: one instance a class.
class Forms {
public:
    [[nodiscard]] std::shared_ptr<Window> Find(std::type_index type) const;
    std::shared_ptr<Window> Make(std::type_index type, const std::function<std::shared_ptr<Window>()>& make);
    /// In the order of their making.
    [[nodiscard]] std::vector<std::shared_ptr<Window>> All() const;
    /// The first of that role, null if there is none.
    [[nodiscard]] std::shared_ptr<Window> First(WindowRole role) const;

    /// It is open no more. It lives on until DropDeparted, as its handlers may be running.
    void Forget(const Window& window);
    /// Forgotten since the last showing.
    [[nodiscard]] const std::vector<std::shared_ptr<Window>>& Closed() const { return m_closed; }
    /// What is closed has been shown as such: a closed window may be where the report came from that is being
    /// handled, so it goes from the loop. True if any waits for that.
    bool DepartClosed();
    /// The loop is at rest: no handler of theirs can be running.
    void DropDeparted();
    /// The end: all go, the last made first. Forms may look at each other while they do.
    void Clear();

private:
    struct Form {
        std::type_index type;
        std::shared_ptr<Window> window;
    };
    std::vector<Form> m_forms;
    std::vector<std::shared_ptr<Window>> m_closed;
    std::vector<std::shared_ptr<Window>> m_departed;
};

} // namespace kirolane
