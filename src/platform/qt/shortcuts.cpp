#include "platform/qt/shortcuts.h"

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

} // namespace kirolane::qt
