#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/reporting.h"
#include "contract/checkbox.h"

#include <QCheckBox>

namespace kirolane::qt {

namespace {

/// The tick follows the control; a click only reports.
class TickWidget : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override {}
};

class CheckBoxPeer final : public ControlPeer {
public:
    CheckBoxPeer(CheckBox& box, QWidget& content) : ControlPeer(box) {
        m_box = new Reporting<TickWidget>(GetLink(), ToPlainText(box.Caption()), &content);
        m_box->setFont(FontOf(box.Design()));
        m_box->setFocusPolicy(Qt::NoFocus);
        QObject::connect(m_box, &QAbstractButton::clicked, m_box, [link = GetLink()] {
            if (auto* clicked = link.As<CheckBox>())
                clicked->ReportClick();
        });
        // An assistive tool turns the check instead of clicking. It gets its answer before the handler runs,
        // which may put up a dialog.
        QObject::connect(m_box, &QAbstractButton::toggled, m_box, [this, link = GetLink()] {
            if (link.As<CheckBox>() == nullptr || m_showing)
                return;
            UpdateOwn();
            QMetaObject::invokeMethod( // the widget's, which may outlast its peer
                m_box, [widget = m_box] { Q_EMIT widget->clicked(); }, Qt::QueuedConnection);
        });
        Adopt(*m_box);
    }

private:
    void UpdateOwn() override {
        m_showing = true;
        m_box->setChecked(Held<CheckBox>().Value());
        m_showing = false;
    }
    [[nodiscard]] QString SpokenName() const override { return ToText(Held<CheckBox>().Caption()); }

    QCheckBox* m_box;
    bool m_showing = false;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(CheckBox& box, QWidget& content) {
    return std::make_unique<CheckBoxPeer>(box, content);
}

} // namespace kirolane::qt
