#pragma once

#include "backends/qt/link.h"
#include "contract/rectcontrol.h"

#include <QString>

#include <functional>

class QWidget;

namespace kirolane::qt {

using ControlLink = Link<RectControl>;

/// What stands on the screen for one control. The widget belongs to the window's content area and outlives
/// the peer by the event that is being handled; the link tells it when the control has gone.
class ControlPeer {
public:
    virtual ~ControlPeer();
    ControlPeer(const ControlPeer&) = delete;
    ControlPeer& operator=(const ControlPeer&) = delete;

    [[nodiscard]] RectControl& Control() const { return *m_link.Get(); }
    [[nodiscard]] QWidget& Widget() const { return *m_widget; }

    /// Shows what the control holds now, but for whether it is to be seen (Visibility).
    void Update();

    /// False while there is nothing to be seen yet where the control stands.
    [[nodiscard]] virtual bool ReadyToShow() const { return true; }
    /// Has `ready` called whenever ReadyToShow may have become true.
    virtual void OnReady(const std::function<void()>& /*ready*/) {}
    /// All widgets of the window stand and show as they are to.
    virtual void WindowSettled() {}

protected:
    explicit ControlPeer(RectControl& control) : m_link(control) {}
    void Adopt(QWidget& widget);
    [[nodiscard]] const ControlLink& GetLink() const { return m_link; }
    template <class T> [[nodiscard]] T& Held() const { return *m_link.As<T>(); }

    /// The class's own part of Update.
    virtual void UpdateOwn() = 0;
    virtual void UpdatePlace();
    /// What an assistive tool calls the control where its design does not say: its text if it has one.
    [[nodiscard]] virtual QString SpokenName() const;

private:
    ControlLink m_link;
    QWidget* m_widget = nullptr;
};

} // namespace kirolane::qt
