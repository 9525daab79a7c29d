#include "backends/qt/spokencommand.h"

#include "backends/qt/accessibility.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace kirolane::qt {

namespace {

class SpokenCommand : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    explicit SpokenCommand(QAction& action) : m_action(&action) {}

    [[nodiscard]] bool isValid() const override { return m_action != nullptr && Owner() != nullptr; }
    [[nodiscard]] QObject* object() const override { return m_action; }
    [[nodiscard]] QAccessible::Role role() const override {
        return m_action->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const QString name = m_action->text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
        return kind == QAccessible::Name ? name : kind == QAccessible::Accelerator ? Key() : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override {
        const QWidget* owner = Owner();
        const auto* menu = qobject_cast<const QMenu*>(owner);
        const auto* bar = qobject_cast<const QMenuBar*>(owner);
        const QRect place = menu != nullptr  ? menu->actionGeometry(m_action)
                            : bar != nullptr ? bar->actionGeometry(m_action)
                                             : QRect();
        return owner == nullptr ? place : place.translated(owner->mapToGlobal(QPoint(0, 0)));
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        const QWidget* owner = Owner();
        const auto* menu = qobject_cast<const QMenu*>(owner);
        const auto* bar = qobject_cast<const QMenuBar*>(owner);
        state.invisible = owner == nullptr || !owner->isVisible() || !m_action->isVisible();
        state.disabled = !m_action->isEnabled();
        state.hasPopup = m_action->menu() != nullptr;
        state.focusable = !m_action->isSeparator();
        state.focused = (menu != nullptr && menu->activeAction() == m_action) ||
                        (bar != nullptr && bar->activeAction() == m_action);
        return state;
    }

    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(Owner());
    }
    [[nodiscard]] int childCount() const override { return m_action->menu() != nullptr ? 1 : 0; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(m_action->menu<QMenu*>()) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        QAccessibleInterface* menu = child(0);
        return menu != nullptr && menu->rect().contains(x, y) ? menu : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        return child != nullptr && child->object() != nullptr && child->object() == m_action->menu<QMenu*>()
                   ? 0
                   : -1;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override {
        if (m_action == nullptr || m_action->isSeparator())
            return {};
        return {m_action->menu() != nullptr ? showMenuAction() : pressAction()};
    }
    void doAction(const QString& /*name*/) override {
        auto* bar = qobject_cast<QMenuBar*>(Owner());
        if (m_action->menu<QMenu*>() == nullptr)
            m_action->trigger();
        else if (bar != nullptr)
            bar->setActiveAction(m_action);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override {
        return SpokenKey(Key());
    }

private:
    /// The menu or the bar that it stands in; a window has it, too, for its key.
    [[nodiscard]] QWidget* Owner() const {
        for (QObject* object : m_action->associatedObjects())
            if (qobject_cast<QMenu*>(object) != nullptr || qobject_cast<QMenuBar*>(object) != nullptr)
                return static_cast<QWidget*>(object);
        return nullptr;
    }
    [[nodiscard]] QString Key() const {
        const QString own = m_action->shortcut().toString(QKeySequence::NativeText);
        return own.isEmpty() ? m_action->text().section(QLatin1Char('\t'), 1) : own;
    }

    QPointer<QAction> m_action;
};

} // namespace

QAccessibleInterface* MakeSpokenCommand(QAction& action) {
    return new SpokenCommand(action);
}

} // namespace kirolane::qt
