#pragma once

#include "logic/lists/name_tail.h"

#include <span>
#include <string_view>

namespace kirolane {

/// A file is listed if a tail of its name equals the extension, without case.
struct Extension {
    std::string_view extension;
    Tail tail;
};

// clang-format off
inline constexpr Extension kMovieExtensions[] = {
    {".mov",  Tail::A},
    {".moov", Tail::B},
    {".qt",   Tail::C},
    {".dv",   Tail::C},
    {".m4v",  Tail::A},
    {".mp4",  Tail::A},
    {".3g2",  Tail::A},
    {".3gp",  Tail::A},
    {".avi",  Tail::A},
    {".divx", Tail::B},
    {".vob",  Tail::A},
    {".mpg",  Tail::A},
    {".mpe",  Tail::A},
    {".mpeg", Tail::B},
    {".m2v",  Tail::A},
    {".wmv",  Tail::A},
    {".asf",  Tail::A}, // in both lists
};

inline constexpr Extension kSoundExtensions[] = {
    {".asf",  Tail::A},
    {".aif",  Tail::A},
    {".aiff", Tail::B},
    {".aifc", Tail::B},
    {".au",   Tail::C},
    {".wav",  Tail::A},
    {".mp3",  Tail::A},
    {".mp2",  Tail::A},
    {".mp1",  Tail::A},
    {".m2a",  Tail::A},
    {".aac",  Tail::A},
    {".m4a",  Tail::A},
    {".wma",  Tail::A},
    {".mid",  Tail::A},
};
// clang-format on

static_assert(std::span(kMovieExtensions).size() == 17 && TailsFit(kMovieExtensions));
static_assert(std::span(kSoundExtensions).size() == 14 && TailsFit(kSoundExtensions));

} // namespace kirolane
