#pragma once

#include "backends/qt/menus.h"

#include <QWidget>

#include <memory>

class QMenuBar;

namespace kirolane::qt {

/// Height of the menu bar in the console; the content area begins below it.
int MenuBarHeight();

/// The top-level widget of one window: frame, menu bar, content area. It outlives its peer by the event that
/// is being handled.
class FormWindow : public QWidget {
public:
    /// What happens to the window, told to its peer.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual void PlaceChanged() = 0; ///< moved or resized
        virtual void ActiveChanged(bool active) = 0;
        virtual void Restored() = 0;
        virtual void CloseRequested() = 0;
        /// A key that no control has used.
        virtual void KeyLeft(QKeyEvent& event) = 0;
    };

    FormWindow(Window& window, Listener& listener);

    [[nodiscard]] QWidget& Content() const { return *m_content; }
    [[nodiscard]] WindowCommands& Commands() { return *m_commands; }
    [[nodiscard]] int BarHeight() const { return m_barShown ? MenuBarHeight() : 0; }
    void SetBarShown(bool shown);
    void SetBackground(const Window& window);
    void ShowTitle(const QString& title);
    /// Top left of the content area in global coordinates.
    [[nodiscard]] QPoint ContentPlace() const { return mapToGlobal(QPoint(0, BarHeight())); }

    /// The peer goes, and the window it shows.
    void Detach();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void LayOut();
    void SetFrameTitle();

    Link<Window> m_link;
    Listener* m_listener;
    QMenuBar* m_bar = nullptr;
    QWidget* m_content;
    std::unique_ptr<WindowCommands> m_commands;
    QString m_title;
    bool m_quiet = false; ///< its title counts the time
    bool m_barShown = false;
    bool m_active = false;
};

} // namespace kirolane::qt
