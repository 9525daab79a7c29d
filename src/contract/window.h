#pragma once

#include "contract/control.h"
#include "contract/menubar.h"
#include "contract/ref.h"
#include "contract/window_design.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane {

class RectControl;
class Screen;
class WindowPeer;

/// Base of the forms. A form describes itself in Layout, CreateControls and AddMenuHandlers and implements
/// the events it needs. The window holds what is wanted; the screen follows when the running handler ends.
class Window : public std::enable_shared_from_this<Window> {
public:
    /// `name` is the form's class name. `design` must live as long as the process.
    Window(std::string_view name, const WindowDesign& design);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] const WindowDesign& Design() const { return m_design; }
    [[nodiscard]] bool Is(WindowRole role) const { return m_design.role == role; }

    /// Shows, raises and activates, also a window that is up. A palette is raised without the keyboard. A
    /// closed window stays closed.
    void Show();
    void Hide();
    /// Fires Close, then takes the form away: the next touch of its implicit instance makes a new one. If the
    /// event fails the window stays.
    void Close();

    /// The content area in global coordinates, in the units of Screen.
    [[nodiscard]] std::int32_t Left() const { return m_rect.left; }
    [[nodiscard]] std::int32_t Top() const { return m_rect.top; }
    [[nodiscard]] std::int32_t Width() const { return m_rect.width; }
    [[nodiscard]] std::int32_t Height() const { return m_rect.height; }
    /// On a full-screen window the four are kept as values; the window goes on covering its screen. Not
    /// clamped to the screen. Negative sizes count as 0. A write fires no Moved.
    void SetLeft(std::int32_t left);
    void SetTop(std::int32_t top);
    void SetWidth(std::int32_t width);
    void SetHeight(std::int32_t height);
    /// Puts the middle of the content area on the middle of the screen.
    void CentreOn(const Screen& screen);

    [[nodiscard]] bool Visible() const { return m_visible; }
    [[nodiscard]] const std::string& Title() const { return m_title; }
    void SetTitle(std::string title);
    /// True covers the whole screen that holds the window's Left and Top.
    [[nodiscard]] bool FullScreen() const { return m_fullScreen; }
    void SetFullScreen(bool fullScreen);
    [[nodiscard]] bool MenuBarVisible() const { return m_menuBarVisible; }
    void SetMenuBarVisible(bool visible);
    [[nodiscard]] Color BackColor() const { return m_backColor; }
    void SetBackColor(Color color);
    [[nodiscard]] bool HasBackColor() const { return m_hasBackColor; }
    void SetHasBackColor(bool on);
    /// The pointer's height in the content area, at the mouse event being handled.
    [[nodiscard]] std::int32_t MouseY() const { return m_mouseY; }
    [[nodiscard]] bool Active() const { return m_active; }

    /// This form's own copy of a bar; null before SetMenuBar.
    [[nodiscard]] const std::shared_ptr<class MenuBar>& MenuBar() const { return m_menuBar; }
    void SetMenuBar(const class MenuBar& bar);
    /// The item of this form's own bar, nil if there is none.
    [[nodiscard]] Ref<class MenuItem> MenuItem(std::string_view name) const;
    /// Binds a handler to a menu item by name. The handler returns true for handled; false leaves the item to
    /// the contract, which matters only to a quit item without a handler.
    void BindMenu(std::string_view itemName, std::function<bool()> handler);
    [[nodiscard]] bool HasMenuHandler(std::string_view itemName) const;

    /// The control of that name, nil if there is none or it is of another class.
    template <class T> [[nodiscard]] Ref<T> Control(std::string_view name) const {
        return Ref<T>(std::dynamic_pointer_cast<T>(Find(name)));
    }
    /// All controls in creation order, which is from back to front.
    [[nodiscard]] std::span<const std::shared_ptr<kirolane::Control>> Controls() const { return m_controls; }
    /// The control that has this window's keyboard, null for none.
    [[nodiscard]] RectControl* FocusControl() const { return m_focus; }

    // Events.
    virtual void Event_Open() {}
    virtual void Event_Close() {}
    virtual void Event_Moved() {}
    virtual void Event_Activate() {}
    virtual void Event_Deactivate() {}
    virtual void Event_Restore() {}
    virtual void Event_EnableMenuItems() {}
    /// Displays came, went or changed, and this full-screen window covers one of this size now.
    virtual void Event_ScreenChanged(std::int32_t /*width*/, std::int32_t /*height*/) {}

    // What a person or the desktop did, told by the back end. Each is a delivery of its own. While the folder
    // chooser is up the place and the activity are still kept, without an event.

    /// The window now stands there; fires Moved if that is news. Ignored while full screen.
    void ReportMoved(std::int32_t left, std::int32_t top);
    void ReportActivated();
    void ReportDeactivated();
    void ReportRestored();
    /// The close box, or the window manager: hides a palette, ignores a window without a close button, closes
    /// any other.
    void ReportCloseRequested();
    /// The key that leaves a dialog: does as the close box, and hides a dialog that has none.
    void ReportEscape();
    /// A key or menu choice: brings the items' enabling up to date and runs the handler of an enabled item. A
    /// quit item without a handler ends the program with status 0.
    void ReportMenuChosen(std::string_view itemName);

    /// Sets every item's Enabled by its AutoEnable, then fires EnableMenuItems.
    void UpdateMenuEnabling();

    // What the runtime does with its windows.

    /// Runs Layout, CreateControls, AddMenuHandlers, Event_Open.
    void Make();
    [[nodiscard]] bool Closed() const { return m_closed; }
    /// Shows what has changed since the last time; the first showing takes everything as it is then.
    void BringUpToDate();
    /// Raises it, and gives it the keyboard unless it is a palette. Nothing while it cannot be seen.
    void BringToFront();
    /// It can be seen, and commands can be given in it.
    [[nodiscard]] bool TakesKeys() const;
    /// A hidden window is active no more. True if it was.
    bool LoseKeyboardIfHidden();
    /// The displays have changed. Tells a full-screen window what it covers now, and brings a window of the
    /// operator's that has lost its display, or has it covered, to the main one; that fires Moved.
    void FollowScreens();

protected:
    /// Applies the design values and the menu bar.
    virtual void Layout() {}
    virtual void CreateControls() {}
    virtual void AddMenuHandlers() {}

    /// Makes one control a row, in order.
    void CreateControls(std::span<const ControlDesign> table);

private:
    friend class MenuItem;
    friend class RectControl;

    [[nodiscard]] std::shared_ptr<class Control> Find(std::string_view name) const;
    [[nodiscard]] std::vector<RectControl*> RectControls() const;
    [[nodiscard]] bool HasLostScreen() const;
    void MarkControl(RectControl& control);
    /// Parts with the items of the bar, which others may still hold.
    void Disown();
    /// Marks the window itself for the next showing.
    void Changed();

    std::string m_name;
    const WindowDesign& m_design;
    Rect m_rect;
    std::string m_title;
    bool m_visible;
    bool m_shown = false; ///< has had its first showing
    bool m_fullScreen = false;
    bool m_menuBarVisible = true;
    bool m_hasBackColor;
    bool m_active = false;
    bool m_closed = false;
    bool m_marked = false;  ///< waits in the runtime's list of changed windows
    bool m_changed = false; ///< the window itself, not only its controls
    Color m_backColor;
    std::int32_t m_mouseY = 0;
    std::shared_ptr<class MenuBar> m_menuBar;
    std::map<std::string, std::function<bool()>, std::less<>> m_menuHandlers;
    std::vector<std::shared_ptr<class Control>> m_controls;
    std::map<std::string, std::shared_ptr<class Control>, std::less<>> m_byName;
    std::vector<RectControl*> m_changedControls;
    RectControl* m_focus = nullptr;
    std::unique_ptr<WindowPeer> m_peer;
};

} // namespace kirolane
