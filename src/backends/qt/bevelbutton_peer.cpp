#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/look.h"
#include "backends/qt/reporting.h"
#include "backends/qt/shortcuts.h"
#include "backends/qt/showapplication.h"
#include "contract/bevelbutton.h"

#include <QAbstractButton>
#include <QPainter>

#include <algorithm>

namespace kirolane::qt {

namespace {

/// Draws itself: raised, under the pointer, held down, or pressed for good by its control.
class BevelWidget : public QAbstractButton {
public:
    BevelWidget(const ControlDesign& design, QWidget* parent)
        : QAbstractButton(parent), m_bevel(design.bevel) {
        setCheckable(design.holds); // an assistive tool reads the pressed look as "checked"
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
    }

protected:
    /// A click changes no look; only the control does.
    void nextCheckState() override {}

    void paintEvent(QPaintEvent* /*event*/) override {
        const bool sunk = isChecked() || isDown();
        int top = sunk ? 0xB4 : 0xFD;
        int bottom = sunk ? 0xD0 : 0xDE - 2 * m_bevel;
        if (underMouse() && isEnabled()) {
            top = std::min(top + 6, 0xFF);
            bottom = std::min(bottom + 12, 0xFF);
        }
        if (isDown()) {
            top -= 0x14;
            bottom -= 0x14;
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (!isEnabled())
            painter.setOpacity(0.55);

        // The folder buttons overlap by the width of their edge, so that a row of them reads as one strip.
        const qreal round = m_bevel;
        const QRectF edge(0.5, 0.5, width() - 1.0, height() - 1.0);
        QLinearGradient ground(0, 0, 0, height());
        ground.setColorAt(0.0, QColor(top, top, top));
        ground.setColorAt(1.0, QColor(bottom, bottom, bottom));
        painter.setBrush(ground);
        painter.setPen(sunk ? QColor(0x60, 0x60, 0x60) : QColor(0x8C, 0x8C, 0x8C));
        painter.drawRoundedRect(edge, round, round);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(sunk ? QColor(0, 0, 0, 0x28) : QColor(255, 255, 255, 0xB0));
        painter.drawRoundedRect(edge.adjusted(1, 1, -1, -1), std::max(round - 1, 0.0),
                                std::max(round - 1, 0.0));

        painter.setOpacity(1.0);
        painter.setPen(palette().color(QPalette::ButtonText)); // faded where disabled
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
        DrawFocus(*this, painter);
    }
    /// A key that is held down presses once.
    bool event(QEvent* event) override {
        return (event->type() == QEvent::Shortcut && static_cast<ShowApplication*>(qApp)->KeyRepeated()) ||
               QAbstractButton::event(event);
    }

private:
    int m_bevel;
};

class BevelButtonPeer final : public ControlPeer {
public:
    BevelButtonPeer(BevelButton& button, QWidget& content) : ControlPeer(button) {
        m_button = new Reporting<BevelWidget>(GetLink(), button.Design(), &content);
        m_button->setFont(FontOf(button.Design()));
        QObject::connect(m_button, &QAbstractButton::clicked, m_button, [link = GetLink()] {
            if (auto* pressed = link.As<BevelButton>())
                pressed->ReportClick();
        });
        if (button.Design().holds)
            SetSpokenRole(*m_button, QAccessible::RadioButton);
        Adopt(*m_button);
    }

private:
    void UpdateOwn() override {
        const QString caption = SpokenName();
        if (m_button->text() != caption) {
            m_button->setText(caption); // which takes the key away
            if (const auto keys = ParseShortcut(Control().Design().shortcut); !keys.isEmpty())
                m_button->setShortcut(keys.front());
        }
        m_button->setChecked(Held<BevelButton>().Value());
    }
    [[nodiscard]] QString SpokenName() const override { return ToText(Held<BevelButton>().Caption()); }

    QAbstractButton* m_button;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(BevelButton& button, QWidget& content) {
    return std::make_unique<BevelButtonPeer>(button, content);
}

} // namespace kirolane::qt
