#pragma once

#include <QKeySequence>
#include <QList>

#include <string_view>

namespace kirolane::qt {

/// The keys that a menu item's notation names ("Cmd+Option+left", "Shift+b", "Space"). Cmd is Ctrl, Option is
/// Alt, Control is Super. More than one where a key stands twice on the keyboard; the first is the one shown.
/// Empty for "" and for a notation that names no key.
QList<QKeySequence> ParseShortcut(std::string_view notation);

/// Those, and where the usual desktops keep them for themselves a second key for the same command, which is
/// the first to be shown on such a desktop. That depends on the system the program is built for.
QList<QKeySequence> KeysOf(std::string_view notation);

} // namespace kirolane::qt
