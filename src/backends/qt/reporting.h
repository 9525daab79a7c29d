#pragma once

#include "backends/qt/controlpeer.h"

#include <QMouseEvent>

namespace kirolane::qt {

/// A widget that tells its control of presses, moves and releases of the main button, around its own
/// handling: the press before it and, if the control keeps that, instead of it; the release after it.
template <class Widget> class Reporting : public Widget {
public:
    template <class... Args>
    explicit Reporting(ControlLink link, Args&&... args)
        : Widget(std::forward<Args>(args)...), m_control(std::move(link)) {}

protected:
    template <class T> [[nodiscard]] T* Held() const { return m_control.As<T>(); }

    void mousePressEvent(QMouseEvent* event) override {
        const QPoint at = event->position().toPoint();
        if (event->button() == Qt::LeftButton)
            m_kept = Held<RectControl>() != nullptr && Held<RectControl>()->ReportMouseDown(at.x(), at.y());
        if (!m_kept)
            Widget::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!m_kept)
            Widget::mouseMoveEvent(event);
        const QPoint at = event->position().toPoint();
        if (auto* control = Held<RectControl>())
            control->ReportMouseMove(at.x(), at.y(), control->Top() + at.y());
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        const QPoint at = event->position().toPoint();
        if (!m_kept)
            Widget::mouseReleaseEvent(event);
        if (event->button() != Qt::LeftButton)
            return;
        m_kept = false;
        if (auto* control = Held<RectControl>())
            control->ReportMouseUp(at.x(), at.y());
    }

private:
    ControlLink m_control;
    bool m_kept = false;
};

} // namespace kirolane::qt
