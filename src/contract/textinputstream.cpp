#include "contract/textinputstream.h"

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

} // namespace kirolane
