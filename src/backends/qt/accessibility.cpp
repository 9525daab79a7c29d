#include "backends/qt/accessibility.h"

#include "backends/qt/spokencommand.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QAction>
#include <QKeySequence>
#include <QWidget>
#include <QWindow>

namespace kirolane::qt {

namespace {

constexpr const char* kRole = "spokenRole";
constexpr const char* kQuiet = "quiet";

class Quiet : public QAccessibleWidget {
public:
    explicit Quiet(QWidget* widget)
        : QAccessibleWidget(widget, widget->isWindow() ? QAccessible::Window : QAccessible::StaticText) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        if (!widget()->isWindow())
            return widget()->property("text").toString();
        return widget()->windowHandle() != nullptr ? widget()->windowHandle()->title() : QString();
    }
};

/// One of several buttons of which one is pressed. The toolkit's own names no key of such a button, and turns
/// it instead of pressing it.
class OneOfSeveral : public QAccessibleWidget {
public:
    explicit OneOfSeveral(QAbstractButton* button)
        : QAccessibleWidget(button, QAccessible::RadioButton), m_button(button) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Accelerator ? Key() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_button->isChecked();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return m_button->isEnabled() ? QStringList{pressAction()} : QStringList();
    }
    /// The tool gets its answer before the handler runs, which may put up a dialog.
    void doAction(const QString& /*name*/) override {
        QMetaObject::invokeMethod(m_button, &QAbstractButton::click, Qt::QueuedConnection);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override {
        return SpokenKey(Key());
    }

private:
    [[nodiscard]] QString Key() const { return m_button->shortcut().toString(QKeySequence::NativeText); }

    QAbstractButton* m_button; // as long as the interface
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* action = qobject_cast<QAction*>(object))
        return MakeSpokenCommand(*action);
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    if (object->property(kQuiet).toBool())
        return new Quiet(static_cast<QWidget*>(object));
    const QVariant role = object->property(kRole);
    if (auto* button = qobject_cast<QAbstractButton*>(object);
        button != nullptr && role == QAccessible::RadioButton)
        return new OneOfSeveral(button);
    return role.isValid() ? new QAccessibleWidget(static_cast<QWidget*>(object),
                                                  static_cast<QAccessible::Role>(role.toInt()))
                          : nullptr;
}

} // namespace

void SetSpokenRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(kRole, static_cast<int>(role));
}

void SetQuiet(QWidget& widget) {
    widget.setProperty(kQuiet, true);
}

void Describe(QWidget& widget, const QString& name, const QString& help) {
    static const bool named = qEnvironmentVariableIsSet("KIROLANE_NAMES");
    widget.setAccessibleDescription(named ? name : help);
}

QStringList SpokenKey(const QString& key) {
    return key.isEmpty() ? QStringList() : QStringList{QString(), QString(), key};
}

void InstallAccessibility() {
    QAccessible::installFactory(MakeInterface);
}

} // namespace kirolane::qt
