#include "backends/qt/controlpeer.h"

#include "backends/qt/accessibility.h"
#include "backends/qt/convert.h"

#include <QFontMetrics>
#include <QStringList>
#include <QToolTip>
#include <QWidget>

namespace kirolane::qt {

namespace {

constexpr int kTipWidth = 480;

/// A path as Qt shows it whatever its characters are, which takes markup. It has no blanks to break at, and
/// in one line it could reach over to the audience's display.
QString TipOf(const std::string& text) {
    const QFontMetrics metrics(QToolTip::font());
    QStringList lines;
    QString rest = ToText(text);
    while (metrics.horizontalAdvance(rest) > kTipWidth) {
        int length = 1;
        while (metrics.horizontalAdvance(rest, length + 1) <= kTipWidth)
            ++length;
        if (const int colon = static_cast<int>(rest.lastIndexOf(QLatin1Char(':'), length - 1)); colon > 0)
            length = colon + 1;
        lines << rest.left(length).toHtmlEscaped();
        rest.remove(0, length);
    }
    if (lines.isEmpty() && rest.isEmpty())
        return {};
    lines << rest.toHtmlEscaped();
    return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(lines.join(QStringLiteral("<br>")));
}

} // namespace

ControlPeer::~ControlPeer() {
    m_link.Cut();
}

void ControlPeer::Adopt(QWidget& widget) {
    m_widget = &widget;
    const QString name = ToText(Control().Name());
    widget.setObjectName(name);
    Describe(widget, name);
    widget.hide(); // until Visibility says otherwise
}

void ControlPeer::Update() {
    const RectControl& control = Control();
    UpdatePlace();
    if (m_widget->isEnabled() != control.Enabled())
        m_widget->setEnabled(control.Enabled());
    m_widget->setMouseTracking(control.OnMouseMove != nullptr);
    const QString tip = TipOf(control.HelpTag());
    if (m_widget->toolTip() != tip) {
        m_widget->setToolTip(tip);
        Describe(*m_widget, m_widget->objectName(), ToText(control.HelpTag())); // the tip has markup
    }
    UpdateOwn();
    const std::string_view named = control.Design().spoken;
    const QString spoken = named.empty() ? SpokenName() : ToText(named);
    if (m_widget->accessibleName() != spoken)
        m_widget->setAccessibleName(spoken);
}

void ControlPeer::UpdatePlace() {
    const RectControl& control = Control();
    const QRect place(control.Left(), control.Top(), control.Width(), control.Height());
    if (m_widget->geometry() != place)
        m_widget->setGeometry(place);
}

QString ControlPeer::SpokenName() const {
    return ToText(Control().Name());
}

} // namespace kirolane::qt
