#include "backends/qt/controlpeers.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"
#include "backends/qt/reporting.h"
#include "contract/editfield.h"

#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionFrame>

namespace kirolane::qt {

namespace {

/// Nobody can scroll a field that is locked: what is too long for it is cut in the middle, so that the last
/// folder of a path stays readable.
class FieldWidget : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    void paintEvent(QPaintEvent* event) override {
        QStyleOptionFrame option;
        initStyleOption(&option);
        const QRect room =
            style()->subElementRect(QStyle::SE_LineEditContents, &option, this).adjusted(2, 0, -2, 0);
        if (isEnabled() || fontMetrics().horizontalAdvance(text()) <= room.width()) {
            QLineEdit::paintEvent(event);
            return;
        }
        QPainter painter(this);
        style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(room, Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
    }
};

class EditFieldPeer final : public ControlPeer {
public:
    EditFieldPeer(EditField& field, QWidget& content) : ControlPeer(field) {
        m_field = new Reporting<FieldWidget>(GetLink(), &content);
        m_field->setFont(FontOf(field.Design()));
        m_field->setFocusPolicy(Qt::ClickFocus);
        if (field.Design().textAlign == TextAlign::Centre)
            m_field->setAlignment(Qt::AlignCenter);
        QObject::connect(m_field, &QLineEdit::textEdited, m_field, [link = GetLink()](const QString& text) {
            if (auto* typed = link.As<EditField>())
                typed->ReportText(text.toStdString());
        });
        Adopt(*m_field);
    }

private:
    void UpdateOwn() override {
        const QString text = ToText(Held<EditField>().Text());
        if (m_field->text() == text)
            return; // leaves the cursor where the typing is
        m_field->setText(text);
        m_field->setCursorPosition(0);
    }

    QLineEdit* m_field;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(EditField& field, QWidget& content) {
    return std::make_unique<EditFieldPeer>(field, content);
}

} // namespace kirolane::qt
