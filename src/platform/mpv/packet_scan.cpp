#include "platform/mpv/packet_scan.h"

#include "platform/mpv/deck_options.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cmath>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kirolane::mpv {

namespace {

constexpr int kBufferSize = 1 << 18;
/// Time stamps further apart are a reset of the clock within the file, in seconds.
constexpr double kReset = 5.0;

using TimePoint = std::chrono::steady_clock::time_point;

/// A regular file as libavformat reads it. After the deadline it has nothing more: a single call of
/// libavformat's may look for a packet through gigabytes.
class Source {
public:
    Source(const std::string& path, TimePoint deadline)
        : m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)), m_deadline(deadline) {
        struct stat info {};
        if (m_file < 0 || fstat(m_file, &info) != 0 || !S_ISREG(info.st_mode))
            return;
        m_size = info.st_size;
        m_io = avio_alloc_context(static_cast<unsigned char*>(av_malloc(kBufferSize)), kBufferSize, 0, this,
                                  &Source::Read, nullptr, &Source::Seek);
    }
    ~Source() {
        if (m_io != nullptr)
            av_freep(static_cast<void*>(&m_io->buffer));
        avio_context_free(&m_io);
        if (m_file >= 0)
            close(m_file);
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    [[nodiscard]] AVIOContext* Io() const { return m_io; }
    [[nodiscard]] bool Expired() const { return std::chrono::steady_clock::now() >= m_deadline; }

private:
    static int Read(void* self, std::uint8_t* buffer, int size) {
        const auto* source = static_cast<Source*>(self);
        if (source->Expired())
            return AVERROR_EXIT;
        const auto count = read(source->m_file, buffer, static_cast<std::size_t>(size));
        return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
    }
    static std::int64_t Seek(void* self, std::int64_t offset, int whence) {
        const auto* source = static_cast<Source*>(self);
        return (whence & AVSEEK_SIZE) != 0 ? source->m_size
                                           : lseek(source->m_file, offset, whence & ~AVSEEK_FORCE);
    }

    int m_file;
    TimePoint m_deadline;
    std::int64_t m_size = 0;
    AVIOContext* m_io = nullptr;
};

struct CloseInput {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

int RefuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EACCES);
}

Input OpenInput(Source& source) {
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr)
        return nullptr;
    context->pb = source.Io();
    context->io_open = &RefuseToOpen;
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", kFormats, 0);
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    const int status = avformat_open_input(&context, "", nullptr, &options); // frees the context if it fails
    av_dict_free(&options);
    if (status < 0)
        return nullptr;
    Input input(context);
    if (avformat_find_stream_info(context, nullptr) < 0)
        return nullptr;
    return input;
}

/// The length of one stream, grown packet by packet.
struct Track {
    bool counts = false; ///< moving picture or sound
    double base = 0.0;   ///< seconds a tick
    bool begun = false;
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
        else
            length += lastDuration;
        begun = true;
        lastTime = time;
        lastDuration = static_cast<double>(std::max<std::int64_t>(packet.duration, 0)) * base;
    }
};

} // namespace

PacketScan ScanPackets(const std::string& path, std::chrono::milliseconds limit) {
    PacketScan scan;
    Source source(path, std::chrono::steady_clock::now() + limit);
    if (source.Io() == nullptr)
        return scan;
    const Input input = OpenInput(source);
    if (input == nullptr)
        return scan;
    scan.hasTimeStamps = (input->iformat->flags & AVFMT_NOTIMESTAMPS) == 0 &&
                         input->duration_estimation_method == AVFMT_DURATION_FROM_PTS;
    if (input->duration > 0 && input->duration_estimation_method == AVFMT_DURATION_FROM_STREAM) {
        scan.headerSeconds = static_cast<double>(input->duration) / AV_TIME_BASE;
        return scan;
    }

    std::vector<Track> tracks(input->nb_streams);
    for (unsigned i = 0; i < input->nb_streams; ++i) {
        const AVStream& stream = *input->streams[i];
        tracks[i].base = av_q2d(stream.time_base);
        tracks[i].counts = stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO ||
                           stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
    }
    const std::unique_ptr<AVPacket, FreePacket> packet(av_packet_alloc());
    int status = 0;
    while (!source.Expired() && (status = av_read_frame(input.get(), packet.get())) >= 0) {
        if (static_cast<std::size_t>(packet->stream_index) < tracks.size())
            tracks[static_cast<std::size_t>(packet->stream_index)].Add(*packet);
        av_packet_unref(packet.get());
    }
    scan.complete = status < 0 && !source.Expired();
    scan.bytesRead = avio_tell(input->pb);

    double begin = 0.0;
    bool any = false;
    for (const Track& track : tracks)
        if (track.counts && track.begun) {
            begin = any ? std::min(begin, track.start) : track.start;
            any = true;
        }
    for (const Track& track : tracks)
        if (track.counts && track.begun)
            scan.seconds = std::max(scan.seconds, track.start - begin + track.length + track.lastDuration);
    return scan;
}

} // namespace kirolane::mpv
