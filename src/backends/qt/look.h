#pragma once

#include <QPalette>
#include <QProxyStyle>

namespace kirolane::qt {

/// The look of all windows, the same on every desktop: places and sizes are fixed in pixels and the designs'
/// colours count on a light ground, so neither a theme's metrics nor its dark colours may come in.
class Look : public QProxyStyle {
public:
    Look();

    static QPalette Palette();

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

/// The frame of the focus, if the widget has it from the keyboard: for what draws itself.
void DrawFocus(const QWidget& widget, QPainter& painter);

} // namespace kirolane::qt
