#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/reporting.h"
#include "contract/canvas.h"

#include <QIcon>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace kirolane::qt {

namespace {

class PictureWidget : public QWidget {
public:
    using QWidget::QWidget;

    void SetPicture(const QString& name) {
        if (name == m_name)
            return;
        m_name = name;
        const QString file = QStringLiteral(":/pictures/%1.png").arg(name);
        m_size = QImageReader(file).size();
        m_picture = QIcon(file); // which finds the file's "@2x" twin for a screen of more device pixels
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        if (!m_picture.isNull())
            QPainter(this).drawPixmap(0, 0, m_picture.pixmap(m_size, devicePixelRatioF()));
    }

private:
    QString m_name;
    QSize m_size;
    QIcon m_picture;
};

class CanvasPeer final : public ControlPeer {
public:
    CanvasPeer(Canvas& canvas, QWidget& content) : ControlPeer(canvas) {
        m_widget = new Reporting<PictureWidget>(GetLink(), &content);
        SetSpokenRole(*m_widget, QAccessible::Graphic);
        Adopt(*m_widget);
    }

private:
    void UpdateOwn() override { m_widget->SetPicture(ToText(Held<Canvas>().Backdrop())); }

    PictureWidget* m_widget;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(Canvas& canvas, QWidget& content) {
    return std::make_unique<CanvasPeer>(canvas, content);
}

} // namespace kirolane::qt
