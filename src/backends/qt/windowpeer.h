#pragma once

#include "backends/qt/controlpeer.h"
#include "backends/qt/formwindow.h"
#include "backends/qt/placement.h"
#include "backends/qt/visibility.h"
#include "contract/backend/windowsystem.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace kirolane::qt {

class QtWindows;

/// What stands on the screen for one window.
class QtWindowPeer final : public WindowPeer, private FormWindow::Listener {
public:
    QtWindowPeer(Window& window, QtWindows& system);
    ~QtWindowPeer() override;
    QtWindowPeer(const QtWindowPeer&) = delete;
    QtWindowPeer& operator=(const QtWindowPeer&) = delete;

    void Update(std::span<RectControl* const> changed, bool windowToo) override;
    void BringToFront(bool withKeyboard) override;
    [[nodiscard]] bool HasDisplay() const override { return m_placement.HasDisplay(); }
    [[nodiscard]] Rect CoveredScreen() const override;

    [[nodiscard]] const Window& Held() const { return m_window; }
    [[nodiscard]] FormWindow& Form() const { return *m_form; }
    [[nodiscard]] Placement& Place() { return m_placement; }
    /// Tells the contract object where the window stands, if that is news.
    void PlaceChanged() override;

private:
    void ActiveChanged(bool active) override;
    void Restored() override;
    void CloseRequested() override;
    void KeyLeft(QKeyEvent& event) override;

    void MakeControls();
    void UpdateWindow();
    void UpdateFocus(bool windowToo);

    Window& m_window;
    QtWindows& m_system;
    FormWindow* m_form; ///< deletes itself after Detach
    Placement m_placement;
    std::vector<std::unique_ptr<ControlPeer>> m_peers;
    std::unordered_map<const RectControl*, ControlPeer*> m_byControl;
    std::unique_ptr<Visibility> m_visibility;
    bool m_handsKeyOn = false;            ///< to its list
    const RectControl* m_focus = nullptr; ///< the contract's, as last acted on
};

} // namespace kirolane::qt
