#include "backends/qt/accessibility.h"

#include "backends/qt/spokencommand.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QWidget>

namespace kirolane::qt {

namespace {

constexpr const char* kRole = "spokenRole";
constexpr const char* kQuiet = "quiet";

class QuietLabel : public QAccessibleWidget {
public:
    explicit QuietLabel(QWidget* label) : QAccessibleWidget(label, QAccessible::StaticText) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? widget()->property("text").toString()
                                         : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* action = qobject_cast<QAction*>(object))
        return MakeSpokenCommand(*action);
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    if (object->property(kQuiet).toBool())
        return new QuietLabel(static_cast<QWidget*>(object));
    const QVariant role = object->property(kRole);
    return role.isValid() ? new QAccessibleWidget(static_cast<QWidget*>(object),
                                                  static_cast<QAccessible::Role>(role.toInt()))
                          : nullptr;
}

} // namespace

void SetSpokenRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(kRole, static_cast<int>(role));
}

void SetQuiet(QWidget& label) {
    label.setProperty(kQuiet, true);
}

void InstallAccessibility() {
    QAccessible::installFactory(MakeInterface);
}

} // namespace kirolane::qt
