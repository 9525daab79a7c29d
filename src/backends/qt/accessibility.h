#pragma once

#include <QAccessible>

class QWidget;

namespace kirolane::qt {

/// Says what a widget is that Qt's own tables do not know: pictures, players, panes.
void SetSpokenRole(QWidget& widget, QAccessible::Role role);

/// Has assistive tools told of those roles. Needs the application object; harmless if repeated.
void InstallAccessibility();

} // namespace kirolane::qt
