#include "backends/qt/controlpeers.h"
#include "contract/slider.h"

#include <QMouseEvent>
#include <QSlider>
#include <QWheelEvent>

#include <utility>

namespace kirolane::qt {

namespace {

/// The left button alone moves the thumb, which is the hand's until it lets go: what the control holds is
/// shown then. Without LiveScroll press and value are told together, at the release; a press that ends
/// without one, because the slider was disabled or hidden under the hand, is not told at all.
class SliderWidget : public QSlider {
public:
    SliderWidget(ControlLink link, QWidget* parent)
        : QSlider(Qt::Horizontal, parent), m_control(std::move(link)) {
        setFocusPolicy(Qt::NoFocus);
        connect(this, &QSlider::valueChanged, this, [this](int value) {
            if (auto* slider = Held(); slider != nullptr && !m_showing && (slider->LiveScroll() || !m_inHand))
                slider->ReportValue(value); // without a press it comes from an assistive tool
        });
    }

    void UpdateControl() {
        const auto* slider = Held();
        if (slider == nullptr)
            return;
        m_showing = true;
        const int thumb = sliderPosition();
        setRange(slider->Minimum(), slider->Maximum());
        setValue(m_inHand ? thumb : slider->Value());
        m_showing = false;
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        auto* slider = Held();
        if (slider == nullptr || event->buttons() != Qt::LeftButton)
            return;
        m_pressed = true;
        m_pressedAt = event->position().toPoint();
        if (slider->LiveScroll() && slider->ReportMouseDown(m_pressedAt.x(), m_pressedAt.y()))
            return;
        m_inHand = true;
        QSlider::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (m_inHand)
            QSlider::mouseMoveEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton || !std::exchange(m_pressed, false))
            return;
        if (m_inHand) {
            // Another button that is still down would keep the thumb at the pointer.
            QMouseEvent alone(event->type(), event->position(), event->globalPosition(), event->button(),
                              Qt::NoButton, event->modifiers());
            QSlider::mouseReleaseEvent(&alone);
            m_inHand = false;
            if (auto* slider = Held(); slider != nullptr && !slider->LiveScroll())
                slider->ReportPressAndValue(m_pressedAt.x(), m_pressedAt.y(), sliderPosition());
            UpdateControl();
        }
        const QPoint at = event->position().toPoint();
        if (auto* slider = Held())
            slider->ReportMouseUp(at.x(), at.y());
    }
    void changeEvent(QEvent* event) override {
        QSlider::changeEvent(event);
        if (event->type() == QEvent::EnabledChange && !isEnabled())
            Drop();
    }
    void hideEvent(QHideEvent* event) override {
        QSlider::hideEvent(event);
        Drop();
    }
    /// A wheel that passes over changes nothing.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    [[nodiscard]] Slider* Held() const { return m_control.As<Slider>(); }

    /// No release will come.
    void Drop() {
        m_pressed = false;
        if (!std::exchange(m_inHand, false))
            return;
        m_showing = true; // a page step under way ends with it
        setSliderDown(false);
        setRepeatAction(SliderNoAction);
        m_showing = false;
        UpdateControl();
    }

    ControlLink m_control;
    QPoint m_pressedAt;
    bool m_pressed = false; ///< the left button is down
    bool m_inHand = false;  ///< and moves the thumb
    bool m_showing = false;
};

class SliderPeer final : public ControlPeer {
public:
    SliderPeer(Slider& slider, QWidget& content) : ControlPeer(slider) {
        m_slider = new SliderWidget(GetLink(), &content);
        m_slider->setSingleStep(slider.Design().lineStep);
        m_slider->setPageStep(slider.Design().pageStep);
        Adopt(*m_slider);
    }

private:
    void UpdateOwn() override { m_slider->UpdateControl(); }

    SliderWidget* m_slider;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(Slider& slider, QWidget& content) {
    return std::make_unique<SliderPeer>(slider, content);
}

} // namespace kirolane::qt
