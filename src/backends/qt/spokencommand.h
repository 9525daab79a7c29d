#pragma once

class QAccessibleInterface;
class QAction;

namespace kirolane::qt {

/// What a screen reader is told of a menu's item. The toolkit's own names its key as programs write it, and a
/// key that is only shown as part of the name.
QAccessibleInterface* MakeSpokenCommand(QAction& action);

} // namespace kirolane::qt
