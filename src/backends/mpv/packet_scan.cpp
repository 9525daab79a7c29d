#include "backends/mpv/packet_scan.h"

#include "backends/mpv/deck_options.h"
#include "backends/mpv/media_input.h"
#include "wire/messages.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace kirolane::mpv {

namespace {

/// Time stamps further apart are a reset of the clock within the file, in seconds.
constexpr double kReset = 5.0;

struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

/// The length of one stream, grown packet by packet.
struct Track {
    bool counts = false; ///< moving picture or sound
    double base = 0.0;   ///< seconds a tick
    bool begun = false;
    bool jumps = false;
    double start = 0.0;
    double lastTime = 0.0;
    double lastDuration = 0.0;
    double length = 0.0; ///< up to the beginning of the last packet

    void Add(const AVPacket& packet) {
        const bool stamped = packet.dts != AV_NOPTS_VALUE;
        const double time = stamped ? static_cast<double>(packet.dts) * base : lastTime + lastDuration;
        if (!begun)
            start = time;
        else if (const double step = time - lastTime; std::abs(step) < kReset)
            length += step;
        else {
            length += lastDuration;
            jumps = true;
        }
        begun = true;
        lastTime = time;
        lastDuration = static_cast<double>(std::max<std::int64_t>(packet.duration, 0)) * base;
    }
};

} // namespace

PacketScan ScanPackets(const MediumPointer& medium, std::chrono::milliseconds limit) {
    PacketScan scan;
    const MediaInput file(medium, kFormats, limit);
    AVFormatContext* input = file.Context();
    if (input == nullptr || avformat_find_stream_info(input, nullptr) < 0)
        return scan;
    scan.hasTimeStamps = (input->iformat->flags & AVFMT_NOTIMESTAMPS) == 0 &&
                         input->duration_estimation_method == AVFMT_DURATION_FROM_PTS;
    const double told = static_cast<double>(input->duration) / AV_TIME_BASE;
    if (told > 0.0 && told <= wire::kLongestFile &&
        input->duration_estimation_method == AVFMT_DURATION_FROM_STREAM) {
        scan.headerSeconds = told;
        return scan;
    }

    std::vector<Track> tracks(input->nb_streams);
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const AVStream& stream = *input->streams[i];
        tracks[i].base = av_q2d(stream.time_base);
        tracks[i].counts = (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
                            (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) ||
                           stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
    }
    const std::unique_ptr<AVPacket, FreePacket> packet(av_packet_alloc());
    int status = 0;
    bool none = true; // has come that plays
    while (!file.Expired() && (status = av_read_frame(input, packet.get())) >= 0) {
        if (static_cast<std::size_t>(packet->stream_index) < tracks.size()) {
            Track& track = tracks[static_cast<std::size_t>(packet->stream_index)];
            if (track.counts && std::exchange(none, false))
                scan.dataFrom = std::max<std::int64_t>(packet->pos, 0);
            track.Add(*packet);
        }
        av_packet_unref(packet.get());
    }
    scan.complete = status < 0 && !file.Expired() && input->pb->error == 0;
    scan.bytesRead = avio_tell(input->pb);

    double begin = 0.0;
    bool any = false;
    for (const Track& track : tracks)
        if (track.counts && track.begun) {
            begin = any ? std::min(begin, track.start) : track.start;
            any = true;
        }
    for (const Track& track : tracks)
        if (track.counts && track.begun) {
            scan.seconds = std::max(scan.seconds, track.start - begin + track.length + track.lastDuration);
            scan.jumps = scan.jumps || track.jumps;
        }
    return scan;
}

} // namespace kirolane::mpv
