#include "platform/qt/controlpeers.h"
#include "platform/qt/reporting.h"
#include "platform/slider.h"

#include <QSlider>
#include <QWheelEvent>

#include <utility>

namespace kirolane::qt {

namespace {

/// While the button is down the thumb is the person's: what the control holds is shown at the release.
class ThumbWidget : public QSlider {
public:
    explicit ThumbWidget(QWidget* parent) : QSlider(Qt::Horizontal, parent) { setFocusPolicy(Qt::NoFocus); }

    [[nodiscard]] bool InHand() const { return m_inHand; }

protected:
    /// A value that a person has set, at the time that LiveScroll says.
    virtual void ValueSet(int value) = 0;
    /// The button is up, and what it set has been told.
    virtual void LetGo() = 0;

    void mousePressEvent(QMouseEvent* event) override {
        m_inHand = event->button() == Qt::LeftButton;
        QSlider::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        QSlider::mouseReleaseEvent(event);
        if (!m_inHand || event->button() != Qt::LeftButton)
            return;
        m_inHand = false;
        ValueSet(sliderPosition());
        LetGo();
    }
    /// A slider that is disabled or hidden under the hand gets no release.
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
    void Drop() {
        if (!std::exchange(m_inHand, false))
            return;
        setSliderDown(false);
        LetGo();
    }

    bool m_inHand = false;
};

class SliderWidget : public Reporting<ThumbWidget> {
public:
    SliderWidget(ControlLink link, QWidget* parent) : Reporting<ThumbWidget>(std::move(link), parent) {
        connect(this, &QSlider::valueChanged, this, [this](int value) {
            if (!m_showing && Live())
                ValueSet(value);
        });
    }

    void ShowControl() {
        const auto* slider = Held<Slider>();
        if (slider == nullptr)
            return;
        m_showing = true;
        setRange(slider->Minimum(), slider->Maximum());
        if (!InHand())
            setValue(slider->Value());
        m_showing = false;
    }

protected:
    void ValueSet(int value) override {
        if (auto* slider = Held<Slider>())
            slider->ReportValue(value);
    }
    void LetGo() override { ShowControl(); }

private:
    /// Values are told as they come: always but within a press on a slider without LiveScroll. Those set
    /// through the desktop's accessibility come without a press.
    [[nodiscard]] bool Live() const {
        const auto* slider = Held<Slider>();
        return slider != nullptr && (slider->LiveScroll() || !InHand());
    }

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
    void ShowOwn() override { m_slider->ShowControl(); }

    SliderWidget* m_slider;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(Slider& slider, QWidget& content) {
    return std::make_unique<SliderPeer>(slider, content);
}

} // namespace kirolane::qt
