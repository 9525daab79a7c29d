#include "backends/qt/accessibility.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace kirolane::qt {

namespace {

constexpr const char* kRole = "spokenRole";

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    const QVariant role = object->property(kRole);
    return role.isValid() ? new QAccessibleWidget(static_cast<QWidget*>(object),
                                                  static_cast<QAccessible::Role>(role.toInt()))
                          : nullptr;
}

} // namespace

void SetSpokenRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(kRole, static_cast<int>(role));
}

void InstallAccessibility() {
    QAccessible::installFactory(MakeInterface);
}

} // namespace kirolane::qt
