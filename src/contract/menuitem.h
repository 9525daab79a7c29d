#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kirolane {

class Window;

/// How an item is treated apart from its handlers.
enum class MenuRole : std::uint8_t { Plain, About, Preferences, Quit };

/// A command of a menu bar, or a menu of such. A text of "-" is a separator.
class MenuItem {
public:
    explicit MenuItem(std::string name, std::string text = {}, std::string shortcut = {});
    virtual ~MenuItem() = default;

    [[nodiscard]] virtual MenuRole Role() const { return MenuRole::Plain; }
    /// A copy with copies of its children; each form has items of its own.
    [[nodiscard]] virtual std::shared_ptr<MenuItem> Clone() const;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] const std::string& Text() const { return m_text; }
    void SetText(std::string text);
    /// Keys joined by "+", as in "Cmd+Option+left"; "" for none. Letters are written in either case.
    [[nodiscard]] const std::string& KeyboardShortcut() const { return m_shortcut; }
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled);
    /// True: whenever the bar's window is in front, the item is enabled exactly if it has a handler there.
    [[nodiscard]] bool AutoEnable() const { return m_autoEnable; }
    void SetAutoEnable(bool automatic);
    [[nodiscard]] bool Visible() const { return m_visible; }
    void SetVisible(bool visible);
    /// True: the key, held down, goes on giving the command. False at first.
    [[nodiscard]] bool Repeats() const { return m_repeats; }
    void SetRepeats(bool repeats);
    [[nodiscard]] bool IsSeparator() const { return m_text == "-"; }

    void Append(std::shared_ptr<MenuItem> child);
    [[nodiscard]] const std::vector<std::shared_ptr<MenuItem>>& Children() const { return m_children; }

protected:
    /// Copies everything but the owner from another item.
    void Take(const MenuItem& other);

private:
    friend class Window;
    void Changed();

    std::string m_name;
    std::string m_text;
    std::string m_shortcut;
    bool m_enabled = true;
    bool m_autoEnable = true;
    bool m_visible = true;
    bool m_repeats = false;
    std::vector<std::shared_ptr<MenuItem>> m_children;
    Window* m_owner = nullptr; ///< the form in whose bar the item stands
};

} // namespace kirolane
