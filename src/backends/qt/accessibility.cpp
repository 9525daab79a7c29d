#include "backends/qt/accessibility.h"

#include "backends/qt/spokencommand.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QWidget>

namespace kirolane::qt {

namespace {

constexpr const char* kRole = "spokenRole";
constexpr const char* kQuiet = "quiet";

class QuietWidget : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        return widget()->property(widget()->isWindow() ? "windowTitle" : "text").toString();
    }
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* action = qobject_cast<QAction*>(object))
        return MakeSpokenCommand(*action);
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    const QVariant given = object->property(kRole);
    if (!given.isValid())
        return nullptr;
    const auto role = static_cast<QAccessible::Role>(given.toInt());
    auto* widget = static_cast<QWidget*>(object);
    return object->property(kQuiet).toBool() ? new QuietWidget(widget, role)
                                             : new QAccessibleWidget(widget, role);
}

} // namespace

void SetSpokenRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(kRole, static_cast<int>(role));
}

void SetQuiet(QWidget& widget, QAccessible::Role role) {
    SetSpokenRole(widget, role);
    widget.setProperty(kQuiet, true);
    widget.setAccessibleName(widget.objectName()); // without one the toolkit tells of each change by itself
}

void InstallAccessibility() {
    QAccessible::installFactory(MakeInterface);
}

} // namespace kirolane::qt
