#include "platform/backend/filesystem.h"
#include "platform/exceptions.h"
#include "platform/textinputstream.h"
#include "platform/textoutputstream.h"

#include <algorithm>

namespace kirolane {

std::string TextInputStream::ReadLine() {
    if (m_next >= m_content.size())
        return {};
    const std::size_t end = std::min(m_content.find('\n', m_next), m_content.size());
    std::size_t length = end - m_next;
    if (length > 0 && m_content[m_next + length - 1] == '\r')
        --length;
    std::string line = m_content.substr(m_next, length);
    m_next = end + 1;
    return line;
}

void TextInputStream::Close() {
    m_next = m_content.size();
}

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
