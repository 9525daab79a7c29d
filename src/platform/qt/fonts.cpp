#include "platform/qt/fonts.h"

#include "platform/qt/convert.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include <algorithm>

namespace kirolane::qt {

namespace {

/// Captions begin where the designs leave room for this size.
constexpr int kLargestSystemSize = 12;

struct Face {
    std::string_view design;
    const char* families; ///< first found serves, joined by "|"
};

// IPAPGothic is the one face tried at 9 pixels that is legible and fits every label's box.
constexpr Face kFaces[] = {
    {"Osaka", "IPAPGothic|IPAexGothic|Takao PGothic|VL PGothic|Noto Sans CJK JP"},
    {"ヒラギノ丸ゴ Pro W4", "Hiragino Maru Gothic ProN|Motoya L Maru|Rounded Mplus 1c|URW Gothic|IPAPGothic"},
};

} // namespace

QFont SystemFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(std::clamp(QFontInfo(font).pixelSize(), 9, kLargestSystemSize));
    return font;
}

QFont FontOf(const ControlDesign& design) {
    QFont font = SystemFont();
    for (const Face& face : kFaces)
        if (Equals(design.textFont, face.design))
            font.setFamilies(QString::fromUtf8(face.families).split(QLatin1Char('|')));
    if (design.textSize > 0)
        font.setPixelSize(design.textSize);
    font.setBold(design.bold);
    return font;
}

} // namespace kirolane::qt
