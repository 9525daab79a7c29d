#pragma once

#include "backends/qt/formwindow.h"

#include <QObject>
#include <QRect>
#include <QStringList>
#include <QTimer>

#include <functional>

class QScreen;

namespace kirolane::qt {

/// Keeps one window where its contract object says, or covering its display. What the window manager or the
/// operator does to it is reported as a move, but not while a placing of our own settles.
class Placement : public QObject {
public:
    Placement(const Window& window, FormWindow& form);

    /// Shows or hides the window, with the size and place of the contract object.
    void Update();
    /// The window was moved or resized. True if that is news for the contract object.
    bool TakeMove(QPoint& place);
    /// A display came, went or changed.
    void ScreensChanged();
    /// False while the display to cover is gone.
    [[nodiscard]] bool HasDisplay() const;
    /// The display that is covered, null while none is.
    [[nodiscard]] QRect Covered() const { return m_form.isVisible() ? m_covered : QRect(); }

    /// Called when a placing has settled somewhere else than was asked.
    std::function<void()> onSettledElsewhere;

private:
    void UpdateFree();
    void Cover();
    void Order(const QRect& client);
    void Settle();
    [[nodiscard]] QScreen* Target() const;
    void Remember(QScreen& screen);

    const Window& m_window;
    FormWindow& m_form;
    QTimer m_settling;
    QPoint m_seen;         ///< the contract's place as last acted on
    QPoint m_reported;     ///< as last told to the contract
    QRect m_client;        ///< ordered: below the title bar, with the menu bar
    QString m_screenName;  ///< the display to cover, known once it has been covered
    QStringList m_besides; ///< names of those that stood beside it: none of these takes its place
    bool m_onMain = false; ///< it was the main one
    QRect m_lastCovered;
    QRect m_covered;         ///< ordered, null while not covering
    int m_corrections = 0;   ///< of the order under way
    bool m_insisted = false; ///< the window manager had its way, as was told
};

} // namespace kirolane::qt
