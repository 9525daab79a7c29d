#include "backends/mpv/movie_header.h"

#include "backends/mpv/media_file.h"
#include "backends/mpv/media_input.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace kirolane::mpv {

namespace {

/// The only containers that can turn their pictures.
constexpr const char* kCapable = "mov,matroska";

/// Whether the first bytes are those of such a container: a look that costs others next to nothing.
bool IsCapable(const Medium& medium) {
    std::array<char, 8> front{};
    if (medium.Read(front.data(), front.size(), 0) != static_cast<std::int64_t>(front.size()))
        return false;
    if (std::memcmp(front.data(), "\x1A\x45\xDF\xA3", 4) == 0)
        return true;
    for (const char* name : {"ftyp", "moov", "mdat", "wide", "free", "skip", "pnot"})
        if (std::memcmp(front.data() + 4, name, 4) == 0)
            return true;
    return false;
}

/// The pictures that libmpv takes of several.
AVStream* Pictures(const AVFormatContext& context) {
    AVStream* first = nullptr;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        AVStream* stream = context.streams[i];
        if (stream->codecpar->codec_type != AVMEDIA_TYPE_VIDEO ||
            (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0)
            continue;
        if ((stream->disposition & AV_DISPOSITION_DEFAULT) != 0)
            return stream;
        if (first == nullptr)
            first = stream;
    }
    return first;
}

/// In the matrix a point x, y of the stored picture goes to a x + c y, b x + d y.
std::string Turn(std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t d) {
    if (std::abs(a) + std::abs(d) >= std::abs(b) + std::abs(c)) {
        if (a < 0 && d < 0)
            return "hflip,vflip";
        return a < 0 ? "hflip" : d < 0 ? "vflip" : "";
    }
    if (b > 0)
        return c > 0 ? "transpose=cclock_flip" : "transpose=clock";
    return c > 0 ? "transpose=cclock" : "transpose=clock_flip";
}

/// Of movies alone whose index tells where every sample is: other tracks tell a part or nothing of their
/// length.
double LongestTrack(const AVFormatContext& context) {
    if (!std::string_view(context.iformat->name).starts_with("mov"))
        return 0.0;
    double begin = 0.0;
    double end = 0.0;
    bool any = false;
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVStream& stream = *context.streams[i];
        const AVMediaType type = stream.codecpar->codec_type;
        if ((type != AVMEDIA_TYPE_VIDEO && type != AVMEDIA_TYPE_AUDIO) || stream.duration <= 0)
            continue;
        if (stream.start_time == AV_NOPTS_VALUE)
            return 0.0;
        const double tick = av_q2d(stream.time_base);
        const double from = static_cast<double>(stream.start_time) * tick;
        const double to = from + static_cast<double>(stream.duration) * tick;
        begin = any ? std::min(begin, from) : from;
        end = any ? std::max(end, to) : to;
        any = true;
    }
    return end - begin;
}

} // namespace

MovieHeader ReadMovieHeader(const MediumPointer& medium, std::chrono::milliseconds limit) {
    MovieHeader header;
    if (!IsCapable(*medium))
        return header;
    const MediaInput input(medium, kCapable, limit);
    if (input.Context() == nullptr)
        return header;
    header.seconds = LongestTrack(*input.Context());
    AVStream* pictures = Pictures(*input.Context());
    if (pictures == nullptr)
        return header;
    header.pictures = true;
    if (const std::int32_t* matrix = DisplayMatrix(*pictures))
        header.turn = Turn(matrix[0], matrix[1], matrix[3], matrix[4]);
    const AVIndexEntry* first = avformat_index_get_entry(pictures, 0);
    header.leadIn = first != nullptr && (first->flags & AVINDEX_DISCARD_FRAME) != 0;
    return header;
}

} // namespace kirolane::mpv
