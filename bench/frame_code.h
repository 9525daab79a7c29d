#pragma once

#include <cstdint>

namespace kirolane::bench {

/// Pixels of 32 bits: blue, green, red and a spare byte.
struct Pixels {
    const std::uint8_t* data = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0; ///< bytes from row to row
};

/// What a picture shows. The measurements' clips carry their own number and that of each frame all over the
/// picture (see clips.sh): rows of blocks, each row the whole number, so that no part of a picture of another
/// kind, or of another frame, goes unseen.
struct Sight {
    enum class Kind : std::uint8_t {
        Frame, ///< one frame of one clip, from edge to edge
        Black,
        Curtain, ///< black with the logo in the middle
        Ground,  ///< mostly the desktop
        Other,   ///< none of these as a whole: torn, or foreign
    };
    Kind kind = Kind::Other;
    int clip = 0;  ///< 1 to 15, with kind Frame
    int frame = 0; ///< from 0, with kind Frame

    [[nodiscard]] bool Shows(int wanted) const { return kind == Kind::Frame && clip == wanted; }
    friend bool operator==(const Sight&, const Sight&) = default;
};

const char* NameOf(Sight::Kind kind);

/// The colour that the measurements give the desktop, as 0xrrggbb.
inline constexpr std::uint32_t kGround = 0xff00ff;

Sight LookAt(const Pixels& picture);

} // namespace kirolane::bench
