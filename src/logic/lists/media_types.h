#pragma once

#include "logic/lists/name_tail.h"

#include <string_view>

namespace kirolane {

/// A kind of file that a list shows: a tail of its name equals the extension, without case. The first row
/// that fits counts.
struct MediaTypeRow {
    std::string_view extension;
    Tail tail;
    std::string_view caption; ///< for the transport's media type label; "" leaves that as it is
};

// clang-format off
inline constexpr MediaTypeRow kMovieTypes[] = {
    {".mov",  Tail::A, "QTM"},
    {".moov", Tail::B, "QTM"},
    {".qt",   Tail::C, "QTM"},
    {".dv",   Tail::C, "DV"},
    {".m4v",  Tail::A, "M4V"},
    {".mp4",  Tail::A, "MP4"},
    {".3g2",  Tail::A, "3G2"},
    {".3gp",  Tail::A, "3GP"},
    {".avi",  Tail::A, "AVI"},
    {".divx", Tail::B, "DivX"},
    {".vob",  Tail::A, "VOB"},
    {".mpg",  Tail::A, "MPEG"},
    {".mpe",  Tail::A, "MPEG"},
    {".mpeg", Tail::B, "MPEG"},
    {".m2v",  Tail::A, "M2V"},
    {".wmv",  Tail::A, "WMV"},
    {".asf",  Tail::A, "ASF"}, // in both lists
};

inline constexpr MediaTypeRow kSoundTypes[] = {
    {".asf",  Tail::A, ""},
    {".aif",  Tail::A, "AIFF"},
    {".aiff", Tail::B, "AIFF"},
    {".aifc", Tail::B, "AIFF"},
    {".au",   Tail::C, "AU"},
    {".wav",  Tail::A, "Wave"},
    {".mp3",  Tail::A, "MP3"},
    {".mp2",  Tail::A, "MP3"},
    {".mp1",  Tail::A, "MP3"},
    {".m2a",  Tail::A, "M2A"},
    {".aac",  Tail::A, "AAC"},
    {".m4a",  Tail::A, "M4A"},
    {".wma",  Tail::A, "WMA"},
    {".mid",  Tail::A, "MIDI"},
};
// clang-format on

static_assert(TailsFit(kMovieTypes) && TailsFit(kSoundTypes));

} // namespace kirolane
