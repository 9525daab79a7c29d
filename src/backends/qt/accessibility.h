#pragma once

#include <QAccessible>

class QWidget;

namespace kirolane::qt {

/// Says what a widget is that Qt's own tables do not know: pictures, players, panes.
void SetSpokenRole(QWidget& widget, QAccessible::Role role);

/// A label whose "text" a tool that looks is told, and none is told of its changes, which its accessible name
/// does not follow.
void SetQuiet(QWidget& label);

/// Has assistive tools told of those, and of the menus' items (MakeSpokenCommand). Needs the application
/// object; harmless if repeated.
void InstallAccessibility();

} // namespace kirolane::qt
