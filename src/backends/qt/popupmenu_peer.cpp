#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/reporting.h"
#include "contract/popupmenu.h"

#include <QComboBox>

namespace kirolane::qt {

namespace {

class PopupMenuPeer final : public ControlPeer {
public:
    PopupMenuPeer(PopupMenu& popup, QWidget& content) : ControlPeer(popup) {
        m_box = new Reporting<QComboBox>(GetLink(), &content);
        m_box->setFont(FontOf(popup.Design()));
        m_box->setFocusPolicy(Qt::NoFocus);
        m_box->setMaxVisibleItems(20);
        QObject::connect(m_box, &QComboBox::currentIndexChanged, m_box, [this, link = GetLink()](int row) {
            if (auto* chosen = link.As<PopupMenu>(); chosen != nullptr && !m_showing)
                chosen->ReportChoice(row);
        });
        Adopt(*m_box);
    }

private:
    void UpdateOwn() override {
        const auto& popup = Held<PopupMenu>();
        m_showing = true;
        for (int row = m_box->count(); row < static_cast<int>(popup.Rows().size()); ++row)
            m_box->addItem(ToText(popup.Rows()[static_cast<std::size_t>(row)]));
        m_box->setCurrentIndex(popup.ListIndex());
        m_showing = false;
    }

    QComboBox* m_box;
    bool m_showing = false;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(PopupMenu& popup, QWidget& content) {
    return std::make_unique<PopupMenuPeer>(popup, content);
}

} // namespace kirolane::qt
