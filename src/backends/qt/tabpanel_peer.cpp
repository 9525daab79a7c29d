#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "contract/tabpanel.h"

#include <QPainter>
#include <QShortcut>
#include <QTabBar>
#include <QWidget>

namespace kirolane::qt {

namespace {

constexpr int kTabHeight = 24;

/// The pane below the tabs. The controls of the pages are not its children: places count from the window.
class PaneWidget : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(0, 0, 0, 0x48));
        painter.setBrush(QColor(0xFF, 0xFF, 0xFF, 0x60));
        painter.drawRoundedRect(QRectF(0.5, kTabHeight - 0.5, width() - 1.0, height() - kTabHeight), 3, 3);
    }
};

class TabPanelPeer final : public ControlPeer {
public:
    TabPanelPeer(TabPanel& panel, QWidget& content) : ControlPeer(panel) {
        auto* pane = new PaneWidget(&content);
        m_tabs = new QTabBar(pane);
        m_tabs->setFont(FontOf(panel.Design()));
        m_tabs->setFocusPolicy(Qt::NoFocus);
        m_tabs->setDrawBase(false);
        m_tabs->setUsesScrollButtons(false);
        m_tabs->setExpanding(false);
        const QString name = ToText(panel.Name());
        m_tabs->setObjectName(name + QStringLiteral(".Tabs"));
        m_tabs->setAccessibleName(ToText(panel.Design().spoken));
        Describe(*m_tabs, name);
        for (const auto& tab : panel.Tabs())
            m_tabs->addTab(ToPlainText(tab));
        QObject::connect(m_tabs, &QTabBar::currentChanged, m_tabs, [this, link = GetLink()](int page) {
            if (auto* turned = link.As<TabPanel>(); turned != nullptr && !m_showing)
                turned->ReportPage(page);
        });
        auto* next = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), m_tabs);
        next->setAutoRepeat(false);
        QObject::connect(next, &QShortcut::activated, m_tabs, [tabs = m_tabs] {
            tabs->setCurrentIndex((tabs->currentIndex() + 1) % tabs->count());
        });
        SetSpokenRole(*pane, QAccessible::Pane);
        Adopt(*pane);
    }

private:
    void UpdateOwn() override {
        m_showing = true;
        m_tabs->setGeometry(8, 0, Control().Width() - 16, kTabHeight);
        m_tabs->setCurrentIndex(Held<TabPanel>().Value());
        m_showing = false;
    }

    QTabBar* m_tabs;
    bool m_showing = false;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(TabPanel& panel, QWidget& content) {
    return std::make_unique<TabPanelPeer>(panel, content);
}

} // namespace kirolane::qt
