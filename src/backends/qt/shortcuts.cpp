#include "backends/qt/shortcuts.h"

#include "backends/qt/convert.h"

#include <QString>

namespace kirolane::qt {

namespace {

struct Modifier {
    const char* given;
    const char* qts;
};

// Qt's own names fit other desktops too: what it calls Ctrl is Command where there is such a key.
constexpr Modifier kModifiers[] = {
    {"Control+", "Meta+"}, // before Cmd, which becomes another Control
    {"Cmd+", "Ctrl+"},
    {"Option+", "Alt+"},
};

#if defined(Q_OS_LINUX) && !defined(Q_OS_ANDROID)
struct SecondKey {
    const char* given;
    const char* second;
};

/// Of the given keys one desktop or another takes: Alt+Space its window menu or search, Super its overview,
/// tiles and desktops, Ctrl+Alt with an arrow its desktops, Ctrl+Super with an arrow those too.
constexpr SecondKey kSecondKeys[] = {
    {"Cmd+Option+left", "Cmd+Shift+left"},
    {"Cmd+Option+right", "Cmd+Shift+right"},
    {"Option+space", "Shift+space"},
    {"Control+b", "Cmd+Shift+b"},
    {"Control+n", "Cmd+Shift+n"},
    {"Option+Control+left", "Option+j"},
    {"Option+Control+right", "Option+l"},
    {"Cmd+Control+left", "Cmd+j"},
    {"Cmd+Control+right", "Cmd+l"},
    {"Cmd+Option+Control+left", "Cmd+Shift+j"},
    {"Cmd+Option+Control+right", "Cmd+Shift+l"},
    {"Control+z", "Cmd+Shift+z"},
    {"Control+x", "Cmd+Shift+x"},
    {"Control+up", "Cmd+Shift+up"},
    {"Control+down", "Cmd+Shift+down"},
    {"Option+Control+down", "Shift+Option+down"},
};

const char* FindSecond(std::string_view notation) {
    for (const auto& row : kSecondKeys)
        if (notation == row.given)
            return row.second;
    return "";
}
#else
const char* FindSecond(std::string_view /*notation*/) {
    return "";
}
#endif

} // namespace

QList<QKeySequence> ParseShortcut(std::string_view notation) {
    QString text = ToText(notation);
    for (const Modifier& modifier : kModifiers)
        text.replace(QLatin1String(modifier.given), QLatin1String(modifier.qts), Qt::CaseInsensitive);
    const auto keys = QKeySequence::fromString(text, QKeySequence::PortableText);
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown)
        return {};
    QList<QKeySequence> found{keys};
    if (keys[0].key() == Qt::Key_Return)
        found.append(QKeySequence(QKeyCombination(keys[0].keyboardModifiers(), Qt::Key_Enter)));
    return found;
}

QList<QKeySequence> KeysOf(std::string_view notation) {
    return ParseShortcut(notation) + ParseShortcut(FindSecond(notation));
}

} // namespace kirolane::qt
