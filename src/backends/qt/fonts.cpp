#include "backends/qt/fonts.h"

#include "backends/qt/convert.h"
#include "contract/text.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QStringList>

#include <algorithm>
#include <clocale>

#include <fontconfig/fontconfig.h>

namespace kirolane::qt {

namespace {

/// Captions begin where the designs leave room for this size.
constexpr int kLargestSystemSize = 12;

/// Smaller type is not legible on the displays of today.
constexpr int kSmallestSize = 8;

/// What a box takes of the width beside its text.
constexpr int kTickRoom = 20;
constexpr int kTickSize = 10;
constexpr int kEdgeRoom = 8;

struct Face {
    std::string_view design;
    const char* families; ///< first found serves, joined by "|"
};

// IPAPGothic is the one face tried at 9 pixels that is legible and fits every label's box.
constexpr Face kFaces[] = {
    {"Osaka", "IPAPGothic|IPAexGothic|Takao PGothic|VL PGothic|Noto Sans CJK JP"},
    {"ヒラギノ丸ゴ Pro W4", "Hiragino Maru Gothic ProN|Motoya L Maru|Rounded Mplus 1c|URW Gothic|IPAPGothic"},
};

QStringList FamiliesOf(const Face& face) {
    return QString::fromUtf8(face.families).split(QLatin1Char('|'));
}

} // namespace

std::future<void> ReadFacesAhead() {
    std::setlocale(LC_ALL, ""); // as Qt is about to, which would change it under the reader
    return std::async(std::launch::async, [] { FcInit(); });
}

QString AbsentFace() {
    const QStringList families = FamiliesOf(kFaces[0]);
    const bool found = std::any_of(families.begin(), families.end(),
                                   [](const QString& family) { return QFontDatabase::hasFamily(family); });
    return found ? QString() : families.first();
}

QFont SystemFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(std::clamp(QFontInfo(font).pixelSize(), 9, kLargestSystemSize));
    return font;
}

QFont FontOf(const ControlDesign& design) {
    QFont font = SystemFont();
    for (const Face& face : kFaces)
        if (Equals(design.textFont, face.design))
            font.setFamilies(FamiliesOf(face));
    font.setBold(design.bold);
    if (design.textSize > 0) {
        font.setPixelSize(std::max(design.textSize, kSmallestSize));
        return font;
    }
    // The size is left to the back end: the usual one, or the largest at which the text fits its box. Ticks
    // stand in columns, so they are all small.
    if (design.kind == ControlKind::CheckBox)
        font.setPixelSize(std::min(font.pixelSize(), kTickSize));
    const int room = design.rect.width - (design.kind == ControlKind::CheckBox ? kTickRoom : kEdgeRoom);
    while (font.pixelSize() > kSmallestSize + 1 &&
           QFontMetrics(font).horizontalAdvance(ToText(design.text)) > room)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

} // namespace kirolane::qt
