#pragma once

#include "contract/control.h"

#include <functional>
#include <string>

namespace kirolane {

/// The base of all visible controls. Setters hold the new state at once, so the next read gives it; the
/// window shows it when the running handler ends. None of the setters here fires an event.
class RectControl : public Control {
public:
    RectControl(class Window& window, const ControlDesign& design);

    /// Window coordinates, from the top left of the content area, which begins below the menu bar.
    [[nodiscard]] std::int32_t Left() const { return m_rect.left; }
    [[nodiscard]] std::int32_t Top() const { return m_rect.top; }
    [[nodiscard]] std::int32_t Width() const { return m_rect.width; }
    [[nodiscard]] std::int32_t Height() const { return m_rect.height; }
    void SetLeft(std::int32_t left);
    void SetTop(std::int32_t top);
    void SetWidth(std::int32_t width);   ///< negative counts as 0
    void SetHeight(std::int32_t height); ///< negative counts as 0

    [[nodiscard]] bool Visible() const { return m_visible; }
    void SetVisible(bool visible);
    [[nodiscard]] bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled);
    /// The tool tip, "" for none.
    [[nodiscard]] const std::string& HelpTag() const { return m_helpTag; }
    void SetHelpTag(const std::string& tag);

    /// Gives this control the keyboard within its window. Neither raises nor activates the window.
    void SetFocus();
    /// Asks for a repaint, after erasing the background if so told.
    void Refresh(bool eraseBackground);

    /// Events. MouseDown returns true to keep the press from the control itself.
    std::function<bool(std::int32_t x, std::int32_t y)> OnMouseDown;
    std::function<void(std::int32_t x, std::int32_t y)> OnMouseUp;
    std::function<void(std::int32_t x, std::int32_t y)> OnMouseMove;

    // What a person did, told by the back end. Each is a delivery of its own.

    /// Fires MouseDown; true if the handler kept the press. x and y are in the control's own coordinates.
    bool ReportMouseDown(std::int32_t x, std::int32_t y);
    void ReportMouseUp(std::int32_t x, std::int32_t y);
    /// A move of the pointer over the control, pressed or not; `windowY` is what Window::MouseY then reads.
    /// A disabled control gets none.
    void ReportMouseMove(std::int32_t x, std::int32_t y, std::int32_t windowY);

protected:
    /// Marks the control for the next showing. Cheap; may be called for every change.
    void Changed();
    /// Has the handler of that event run as a delivery of its own, if there is one.
    void Fire(const char* event, const std::function<void()>& handler) const;

private:
    friend class Window;

    Rect m_rect;
    bool m_visible;
    bool m_enabled;
    bool m_marked = false; ///< waits in the window's list of changed controls
    std::string m_helpTag;
};

} // namespace kirolane
