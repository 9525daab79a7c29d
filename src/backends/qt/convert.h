#pragma once

#include "contract/color.h"
#include "contract/geometry.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <string_view>

namespace kirolane::qt {

/// What is shown of a string; bytes that are not UTF-8 become replacement characters.
inline QString ToText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The same for widgets that read "&" as the mark of a mnemonic and "<b>" as bold.
inline QString ToPlainText(std::string_view text) {
    return ToText(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

inline QColor ToQt(Color color) {
    return {color.red, color.green, color.blue};
}
inline QRect ToQt(const Rect& rect) {
    return {rect.left, rect.top, rect.width, rect.height};
}
inline Rect FromQt(const QRect& rect) {
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

} // namespace kirolane::qt
