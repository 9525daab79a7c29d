#pragma once

#include <QAccessible>

class QWidget;

namespace kirolane::qt {

/// Says what a widget is that Qt's own tables do not know: pictures, players, panes; and RadioButton of a
/// button of which one of several is pressed.
void SetSpokenRole(QWidget& widget, QAccessible::Role role);

/// A label whose "text" a tool that looks is told, or a window whose title as its frame shows it; and none is
/// told of their changes, which the accessible name does not follow.
void SetQuiet(QWidget& widget);

/// Describes the widget to assistive tools by the help text, and by its name instead where KIROLANE_NAMES is
/// in the environment: tests find it by that, and a screen reader would read it out with the widget.
void Describe(QWidget& widget, const QString& name, const QString& help = {});

/// A key as the action of a control or command is to give it: joined, the list has the three places of which
/// screen readers say the last.
QStringList SpokenKey(const QString& key);

/// Has assistive tools told of those, and of the menus' items (MakeSpokenCommand). Needs the application
/// object; harmless if repeated.
void InstallAccessibility();

} // namespace kirolane::qt
