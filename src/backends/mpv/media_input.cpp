#include "backends/mpv/media_input.h"

#include "backends/mpv/media_file.h"

#include <sys/stat.h>
#include <unistd.h>

namespace kirolane::mpv {

namespace {

constexpr int kBufferSize = 1 << 18;
constexpr std::size_t kMatrixBytes = 9 * sizeof(std::int32_t);

int RefuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EACCES);
}

} // namespace

MediaInput::MediaInput(const std::string& path, const char* formats, std::chrono::milliseconds limit)
    : m_file(OpenRegular(path)), m_deadline(std::chrono::steady_clock::now() + limit) {
    struct stat info {};
    if (m_file < 0 || fstat(m_file, &info) != 0)
        return;
    m_size = info.st_size;
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
    if (m_file >= 0)
        close(m_file);
}

int MediaInput::Read(void* self, std::uint8_t* buffer, int size) {
    const auto* input = static_cast<MediaInput*>(self);
    if (input->Expired())
        return AVERROR_EXIT;
    const auto count = read(input->m_file, buffer, static_cast<std::size_t>(size));
    return count > 0 ? static_cast<int>(count) : AVERROR_EOF;
}

std::int64_t MediaInput::Seek(void* self, std::int64_t offset, int whence) {
    const auto* input = static_cast<MediaInput*>(self);
    return (whence & AVSEEK_SIZE) != 0 ? input->m_size : lseek(input->m_file, offset, whence & ~AVSEEK_FORCE);
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
