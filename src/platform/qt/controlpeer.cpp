#include "platform/qt/controlpeer.h"

#include "platform/qt/convert.h"

#include <QWidget>

namespace kirolane::qt {

ControlPeer::~ControlPeer() {
    m_link.Cut();
}

void ControlPeer::Adopt(QWidget& widget) {
    m_widget = &widget;
    const QString name = Shown(Control().Name());
    widget.setObjectName(name);
    widget.setAccessibleDescription(name);
    widget.hide(); // until the stage says otherwise
}

void ControlPeer::Show() {
    const RectControl& control = Control();
    ShowPlace();
    if (m_widget->isEnabled() != control.Enabled())
        m_widget->setEnabled(control.Enabled());
    m_widget->setMouseTracking(control.OnMouseMove != nullptr);
    const QString tip = Shown(control.HelpTag()).toHtmlEscaped(); // a path is no markup
    if (m_widget->toolTip() != tip)
        m_widget->setToolTip(tip);
    ShowOwn();
    const QString spoken = SpokenName();
    if (m_widget->accessibleName() != spoken)
        m_widget->setAccessibleName(spoken);
}

void ControlPeer::ShowPlace() {
    const RectControl& control = Control();
    const QRect place(control.Left(), control.Top(), control.Width(), control.Height());
    if (m_widget->geometry() != place)
        m_widget->setGeometry(place);
}

QString ControlPeer::SpokenName() const {
    return Shown(Control().Name());
}

} // namespace kirolane::qt
