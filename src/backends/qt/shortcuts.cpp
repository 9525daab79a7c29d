#include "backends/qt/shortcuts.h"

#include "backends/qt/convert.h"

#include <QString>

#include <algorithm>

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
    const char* takers; ///< desktops as XDG_CURRENT_DESKTOP names them, with blanks between; "*" is any
};

/// Of the given keys one desktop or another takes: Alt+Space its window menu or search, Super its overview,
/// tiles and desktops, Ctrl+Alt with an arrow its desktops, Ctrl+Super or Alt+Shift with an arrow those too.
// clang-format off
constexpr SecondKey kSecondKeys[] = {
    {"Cmd+Option+left",          "Cmd+Shift+left",    "GNOME XFCE LXDE"},
    {"Cmd+Option+right",         "Cmd+Shift+right",   "GNOME XFCE LXDE"},
    {"Option+space",             "Shift+space",       "*"},
    {"Control+b",                "Cmd+Shift+b",       "KDE"},
    {"Control+n",                "Cmd+Shift+n",       "GNOME"},
    {"Option+Control+left",      "Option+j",          "GNOME KDE"},
    {"Option+Control+right",     "Option+l",          "GNOME KDE"},
    {"Cmd+Control+left",         "Cmd+j",             "KDE"},
    {"Cmd+Control+right",        "Cmd+l",             "KDE"},
    {"Cmd+Option+Control+left",  "Cmd+Shift+j",       ""},
    {"Cmd+Option+Control+right", "Cmd+Shift+l",       ""},
    {"Control+z",                "Cmd+Shift+z",       ""},
    {"Control+x",                "Cmd+Shift+x",       ""},
    {"Shift+Option+left",        "Shift+Option+j",    "LXDE"},
    {"Shift+Option+right",       "Shift+Option+l",    "LXDE"},
    {"Control+up",               "Cmd+Shift+up",      "GNOME KDE"},
    {"Control+down",             "Cmd+Shift+down",    "GNOME KDE"},
    {"Option+Control+down",      "Option+m",          "GNOME KDE"},
};
// clang-format on

const SecondKey* FindSecond(std::string_view notation) {
    const auto* row = std::find_if(std::begin(kSecondKeys), std::end(kSecondKeys),
                                   [&](const SecondKey& second) { return notation == second.given; });
    return row == std::end(kSecondKeys) ? nullptr : row;
}

/// Whether the desktop that the program runs on keeps the given key for itself.
bool IsTaken(const SecondKey& row) {
    const QStringList desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const QStringList takers = QString::fromLatin1(row.takers).split(QLatin1Char(' '));
    return std::any_of(desktops.begin(), desktops.end(), [&](const QString& desktop) {
        return takers.contains(QLatin1String("*")) || takers.contains(desktop, Qt::CaseInsensitive);
    });
}
#else
struct SecondKey {
    const char* second;
};
const SecondKey* FindSecond(std::string_view /*notation*/) {
    return nullptr;
}
bool IsTaken(const SecondKey& /*row*/) {
    return false;
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
    const auto keys = ParseShortcut(notation);
    const SecondKey* row = FindSecond(notation);
    if (row == nullptr)
        return keys;
    const auto second = ParseShortcut(row->second);
    return IsTaken(*row) ? second + keys : keys + second;
}

} // namespace kirolane::qt
