#include "backends/qt/look.h"

#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStyleOptionMenuItem>
#include <QWidget>

namespace kirolane::qt {

Look::Look() : QProxyStyle(QStringLiteral("Fusion")) {}

QPalette Look::Palette() {
    const QColor ground(0xEC, 0xEC, 0xEC);
    const QColor text(0x1A, 0x1A, 0x1A);
    const QColor faded(0x85, 0x85, 0x85);
    const QColor highlight(0x38, 0x75, 0xD7);

    QPalette palette(ground);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xED, 0xF3, 0xFE));
    palette.setColor(QPalette::Button, QColor(0xF2, 0xF2, 0xF2));
    palette.setColor(QPalette::Light, Qt::white);
    palette.setColor(QPalette::Mid, QColor(0xB8, 0xB8, 0xB8));
    palette.setColor(QPalette::Dark, QColor(0x8C, 0x8C, 0x8C));
    palette.setColor(QPalette::Shadow, QColor(0x60, 0x60, 0x60));
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFF, 0xE1));
    palette.setColor(QPalette::ToolTipText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faded);
    }
    return palette;
}

int Look::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                    QStyleHintReturn* result) const {
    switch (hint) {
    case SH_MenuBar_AltKeyNavigation: // Alt is half of many commands; tapped alone it must not take the keys
    case SH_Widget_Animation_Duration:
    case SH_ComboBox_Popup:
    case SH_TabBar_AllowWheelScrolling:
    case SH_ComboBox_AllowWheelScrolling: // a wheel that passes over must change nothing
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

void Look::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuBarItem || item == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    // Without the line that Fusion draws below each item.
    const bool chosen = (item->state & State_Selected) && (item->state & State_Enabled);
    const QPalette& colors = item->palette;
    painter->fillRect(item->rect, colors.brush(chosen ? QPalette::Highlight : QPalette::Window));
    drawItemText(painter, item->rect, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, colors,
                 item->state & State_Enabled, item->text,
                 chosen ? QPalette::HighlightedText : QPalette::WindowText);
}

void DrawFocus(const QWidget& widget, QPainter& painter) {
    if (!widget.hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(&widget);
    option.rect = widget.rect().adjusted(1, 1, -1, -1);
    widget.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &widget);
}

int Look::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    // What three columns and the frame leave of a list's width.
    if (metric == PM_ScrollBarExtent)
        return 15;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace kirolane::qt
