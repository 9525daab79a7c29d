#include "frame_code.h"

#include <array>
#include <optional>

namespace kirolane::bench {

namespace {

// As clips.sh draws them: a column a bit, the lowest at the left; every second row turned over.
constexpr int kColumns = 20;
constexpr int kRows = 8;
constexpr int kClipBits = 4;

constexpr int kDark = 100; ///< of 255: a block below is black, above kBright white
constexpr int kBright = 155;
constexpr int kBlack = 24;     ///< nothing brighter is in a black picture
constexpr int kLogoWidth = 80; ///< of the middle of the picture, within the logo
constexpr int kLogoHeight = 80;

struct Color {
    int red;
    int green;
    int blue;
    [[nodiscard]] int Brightness() const { return (2 * red + 5 * green + blue) / 8; }
};

Color At(const Pixels& picture, int x, int y) {
    const std::uint8_t* pixel = picture.data + static_cast<std::ptrdiff_t>(y) * picture.stride + 4 * x;
    return {pixel[2], pixel[1], pixel[0]};
}

/// Calls visit for some points within each block, up to a sixth of its size from its middle.
template <class Visit> void VisitBlock(const Pixels& picture, int column, int row, Visit visit) {
    for (int down = 2; down <= 4; ++down)
        for (int along = 2; along <= 4; ++along)
            visit(At(picture, (6 * column + along) * picture.width / (6 * kColumns),
                     (6 * row + down) * picture.height / (6 * kRows)));
}

/// The bit of a block, nothing if it is neither all dark nor all bright.
std::optional<bool> BitOf(const Pixels& picture, int column, int row) {
    bool dark = true;
    bool bright = true;
    VisitBlock(picture, column, row, [&](Color color) {
        dark = dark && color.Brightness() < kDark;
        bright = bright && color.Brightness() > kBright;
    });
    return dark == bright ? std::nullopt : std::optional(bright != (row % 2 != 0));
}

std::optional<int> NumberOf(const Pixels& picture) {
    std::optional<int> number;
    for (int row = 0; row < kRows; ++row) {
        int value = 0;
        for (int column = 0; column < kColumns; ++column) {
            const auto bit = BitOf(picture, column, row);
            if (!bit)
                return std::nullopt;
            value |= (*bit ? 1 : 0) << column;
        }
        if (number && *number != value)
            return std::nullopt;
        number = value;
    }
    return number;
}

bool HasLogo(const Pixels& picture) {
    for (int y = (picture.height - kLogoHeight) / 2; y < (picture.height + kLogoHeight) / 2; y += 4)
        for (int x = (picture.width - kLogoWidth) / 2; x < (picture.width + kLogoWidth) / 2; x += 4)
            if (At(picture, x, y).Brightness() > kDark)
                return true;
    return false;
}

Sight::Kind KindWithoutFrame(const Pixels& picture) {
    int points = 0;
    int black = 0;
    int ground = 0;
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column)
            VisitBlock(picture, column, row, [&](Color color) {
                ++points;
                black += color.Brightness() <= kBlack ? 1 : 0;
                ground += color.red > 240 && color.green < 16 && color.blue > 240 ? 1 : 0;
            });
    if (2 * ground > points)
        return Sight::Kind::Ground;
    if (10 * black < 9 * points)
        return Sight::Kind::Other;
    if (HasLogo(picture))
        return Sight::Kind::Curtain;
    return black == points ? Sight::Kind::Black : Sight::Kind::Other;
}

} // namespace

const char* NameOf(Sight::Kind kind) {
    constexpr std::array names = {"frame", "black", "curtain", "desktop", "other"};
    return names[static_cast<std::size_t>(kind)];
}

Sight LookAt(const Pixels& picture) {
    const auto number = NumberOf(picture);
    if (!number)
        return {KindWithoutFrame(picture), 0, 0};
    return {Sight::Kind::Frame, *number & ((1 << kClipBits) - 1), *number >> kClipBits};
}

} // namespace kirolane::bench
