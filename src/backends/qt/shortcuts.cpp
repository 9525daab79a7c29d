#include "backends/qt/shortcuts.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace kirolane::qt {

namespace {

struct NamedModifier {
    const char* name;
    Qt::KeyboardModifier modifier;
};

// Qt's own names fit other desktops too: what it calls Control is Command where there is such a key.
constexpr NamedModifier kModifiers[] = {
    {"cmd", Qt::ControlModifier},
    {"option", Qt::AltModifier},
    {"control", Qt::MetaModifier},
    {"shift", Qt::ShiftModifier},
};

struct NamedKey {
    const char* name;
    Qt::Key key;
};

constexpr NamedKey kKeys[] = {
    {"return", Qt::Key_Return},     {"enter", Qt::Key_Enter},   {"space", Qt::Key_Space},
    {"left", Qt::Key_Left},         {"right", Qt::Key_Right},   {"up", Qt::Key_Up},
    {"down", Qt::Key_Down},         {"home", Qt::Key_Home},     {"end", Qt::Key_End},
    {"pageup", Qt::Key_PageUp},     {"tab", Qt::Key_Tab},       {"escape", Qt::Key_Escape},
    {"pagedown", Qt::Key_PageDown}, {"delete", Qt::Key_Delete}, {"backspace", Qt::Key_Backspace},
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

std::optional<Qt::KeyboardModifier> FindModifier(const QString& name) {
    for (const auto& row : kModifiers)
        if (name == QLatin1String(row.name))
            return row.modifier;
    return std::nullopt;
}

std::optional<Qt::Key> FindKey(const QString& name) {
    for (const auto& row : kKeys)
        if (name == QLatin1String(row.name))
            return row.key;
    if (name.size() == 1 && name.front().isPrint()) // letters and signs are their own codes
        return static_cast<Qt::Key>(name.front().toUpper().unicode());
    bool number = false;
    const int n = name.mid(1).toInt(&number);
    if (name.startsWith(QLatin1Char('f')) && number && n >= 1 && n <= 35)
        return static_cast<Qt::Key>(Qt::Key_F1 + n - 1);
    return std::nullopt;
}

} // namespace

QList<QKeySequence> ParseShortcut(std::string_view notation) {
    QString rest = QString::fromUtf8(notation.data(), static_cast<qsizetype>(notation.size())).toLower();
    Qt::KeyboardModifiers modifiers;
    for (qsizetype plus = rest.indexOf(QLatin1Char('+')); plus > 0; plus = rest.indexOf(QLatin1Char('+'))) {
        const auto modifier = FindModifier(rest.left(plus));
        if (!modifier)
            return {};
        modifiers |= *modifier;
        rest = rest.mid(plus + 1);
    }
    const auto key = FindKey(rest);
    if (!key)
        return {};
    QList<QKeySequence> keys{QKeySequence(QKeyCombination(modifiers, *key))};
    if (*key == Qt::Key_Return)
        keys.append(QKeySequence(QKeyCombination(modifiers, Qt::Key_Enter)));
    return keys;
}

QList<QKeySequence> KeysOf(std::string_view notation) {
    return ParseShortcut(notation) + ParseShortcut(FindSecond(notation));
}

} // namespace kirolane::qt
