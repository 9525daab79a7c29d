#pragma once

#include "wire/board.h"
#include "wire/engine_options.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace kirolane::wire {

/// What passes between the program with the windows and an engine: a kind, the plain struct of that kind and
/// for some a text behind it. Both sides are of one build, and neither trusts the other's numbers.

inline constexpr std::size_t kLongestText = 8192;
/// In seconds: a length beyond it is a header's lie.
inline constexpr double kLongestFile = 1e7;
/// The engine's end of the channel is this descriptor of its.
inline constexpr int kEngineDescriptor = 3;

enum class Kind : std::uint32_t {
    Assign = 1,
    Surface,
    Load,
    Release,
    Orders,
    Ping,
    Ready = 101,
    Boxed,
    Begun,
    Loaded,
    Changed,
    Pong,
    Line,
};

// To the engine.

/// Once: the players that it is to have. Text: JoinTexts of each player's path and stream name and of the
/// options. With the board.
struct Assign {
    static constexpr Kind kKind = Kind::Assign;
    std::uint32_t players;
    Role roles[kMostPlayers];
    std::int64_t loadLimit; ///< milliseconds
    std::int64_t seekLimit;
};

/// Where the player's pictures are to go from now on, of this size. With the memory; 0 x 0, and nowhere,
/// without.
struct Surface {
    static constexpr Kind kKind = Kind::Surface;
    std::uint32_t player;
    std::int32_t width;
    std::int32_t height;
};

/// Text: the path, for lines. With the medium.
struct Load {
    static constexpr Kind kKind = Kind::Load;
    std::uint32_t player;
    std::uint32_t number; ///< of this load
    std::int64_t limit;   ///< milliseconds, for all loads of the handler
    double from;          ///< seconds at which it is to stand
    double picture;       ///< and of the picture that it is to show there
};

struct Release {
    static constexpr Kind kKind = Kind::Release;
    std::uint32_t player;
};

struct Order {
    std::uint32_t player;
    std::uint8_t unload;
    std::uint8_t running;
    std::uint8_t seeks;
    double seekTo;
    double rate;
    std::int32_t volume;
};

/// All orders of one handler.
struct Orders {
    static constexpr Kind kKind = Kind::Orders;
    std::uint64_t number;
    std::uint32_t count;
    Order orders[kMostPlayers];
};

struct Ping {
    static constexpr Kind kKind = Kind::Ping;
};

// From the engine.

struct Ready {
    static constexpr Kind kKind = Kind::Ready;
};

/// Once, before it has taken a file up: it is in its box, or what of it is missing. With the listener for
/// its calls of connect, if its outputs need any. Text: what is missing, "" if nothing is.
struct Boxed {
    static constexpr Kind kKind = Kind::Boxed;
};

struct Begun {
    static constexpr Kind kKind = Kind::Begun;
    std::uint32_t player;
    std::uint32_t number;
};

struct Loaded {
    static constexpr Kind kKind = Kind::Loaded;
    std::uint32_t player;
    std::uint32_t number;
    double duration; ///< seconds, above 0; else it could not be opened, and a line has been told
};

/// A new picture, or other flags: see the board.
struct Changed {
    static constexpr Kind kKind = Kind::Changed;
    std::uint32_t player;
};

struct Pong {
    static constexpr Kind kKind = Kind::Pong;
};

/// Text: for standard error.
struct Line {
    static constexpr Kind kKind = Kind::Line;
};

} // namespace kirolane::wire
