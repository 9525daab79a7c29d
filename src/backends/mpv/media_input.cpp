#include "backends/mpv/media_input.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace kirolane::mpv {

namespace {

constexpr int kBufferSize = 1 << 18;
constexpr std::size_t kMatrixBytes = 9 * sizeof(std::int32_t);

int RefuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EACCES);
}

} // namespace

MediaInput::MediaInput(MediumPointer medium, const char* formats, std::chrono::milliseconds limit)
    : m_medium(std::move(medium)), m_deadline(std::chrono::steady_clock::now() + limit) {
    m_io = avio_alloc_context(static_cast<unsigned char*>(av_malloc(kBufferSize)), kBufferSize, 0, this,
                              &MediaInput::Read, nullptr, &MediaInput::Seek);
    m_context = avformat_alloc_context();
    if (m_io == nullptr || m_context == nullptr)
        return;
    m_context->pb = m_io;
    m_context->io_open = &RefuseToOpen;
    m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", formats, 0);
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    avformat_open_input(&m_context, "", nullptr, &options); // frees the context if it fails
    av_dict_free(&options);
}

MediaInput::~MediaInput() {
    avformat_close_input(&m_context);
    if (m_io != nullptr)
        av_freep(static_cast<void*>(&m_io->buffer));
    avio_context_free(&m_io);
}

int MediaInput::Read(void* self, std::uint8_t* buffer, int size) {
    auto* input = static_cast<MediaInput*>(self);
    if (input->Expired())
        return AVERROR_EXIT;
    const auto count = input->m_medium->Read(buffer, static_cast<std::size_t>(size), input->m_position);
    input->m_position += std::max<std::int64_t>(count, 0);
    return count > 0 ? static_cast<int>(count) : count == 0 ? AVERROR_EOF : AVERROR(EIO);
}

std::int64_t MediaInput::Seek(void* self, std::int64_t offset, int whence) {
    auto* input = static_cast<MediaInput*>(self);
    const std::int64_t size = input->m_medium->File().size;
    if ((whence & AVSEEK_SIZE) != 0)
        return size;
    const int from = whence & ~AVSEEK_FORCE;
    const std::int64_t base = from == SEEK_CUR ? input->m_position : from == SEEK_END ? size : 0;
    if (offset < -base)
        return AVERROR(EINVAL);
    input->m_position = base + offset;
    return input->m_position;
}

const std::int32_t* DisplayMatrix(const AVStream& stream) {
// libavformat moved what goes with a stream into its codec's parameters.
#if LIBAVFORMAT_VERSION_INT >= AV_VERSION_INT(60, 15, 100)
    const AVPacketSideData* data = av_packet_side_data_get(
        stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data, AV_PKT_DATA_DISPLAYMATRIX);
    const std::uint8_t* bytes = data != nullptr ? data->data : nullptr;
    const std::size_t size = data != nullptr ? data->size : 0;
#else
    std::size_t size = 0;
    const std::uint8_t* bytes = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
#endif
    return size >= kMatrixBytes ? reinterpret_cast<const std::int32_t*>(bytes) : nullptr;
}

} // namespace kirolane::mpv
