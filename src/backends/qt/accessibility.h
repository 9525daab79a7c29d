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

/// Has assistive tools told of those, and of the menus' items (MakeSpokenCommand). Needs the application
/// object; harmless if repeated.
void InstallAccessibility();

} // namespace kirolane::qt
