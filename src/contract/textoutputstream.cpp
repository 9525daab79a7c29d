#include "contract/textoutputstream.h"

#include "contract/backend/filesystem.h"
#include "contract/exceptions.h"

namespace kirolane {

TextOutputStream::TextOutputStream(std::unique_ptr<TextSink> sink) : m_sink(std::move(sink)) {}

TextOutputStream::~TextOutputStream() = default;

void TextOutputStream::WriteLine(std::string_view text) {
    m_content += text;
    m_content += '\n';
}

void TextOutputStream::Close() {
    if (m_sink == nullptr)
        return;
    const auto sink = std::move(m_sink);
    const std::string cause = sink->Write(m_content);
    if (!cause.empty())
        throw FileWriteException(sink->Path() + ": " + cause);
}

} // namespace kirolane
