#include "platform/qt/look.h"

namespace kirolane::qt {

Look::Look() : QProxyStyle(QStringLiteral("Fusion")) {}

QPalette Look::Palette() {
    const QColor ground(0xEC, 0xEC, 0xEC);
    const QColor text(0x1A, 0x1A, 0x1A);
    const QColor faded(0x9A, 0x9A, 0x9A);
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
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xC4, 0xCF, 0xE0));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
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
    case SH_ComboBox_AllowWheelScrolling: // a wheel that passes over must change nothing
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

int Look::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    // What three columns and the frame leave of a list's width.
    if (metric == PM_ScrollBarExtent)
        return 15;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

} // namespace kirolane::qt
