#pragma once

#include <QAccessible>

class QWidget;

namespace kirolane::qt {

/// Says what a widget is that Qt's own tables do not know: pictures, players, panes.
void SetSpokenRole(QWidget& widget, QAccessible::Role role);

/// A label or window of that role whose text or title a tool that looks is told, and none is told of its
/// changes. The accessible name is not used, and has to stay as it is. Needs the object name.
void SetQuiet(QWidget& widget, QAccessible::Role role);

/// Has assistive tools told of those, and of the menus' items (MakeSpokenCommand). Needs the application
/// object; harmless if repeated.
void InstallAccessibility();

} // namespace kirolane::qt
