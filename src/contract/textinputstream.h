#pragma once

#include <string>

namespace kirolane {

/// Reads a text file line by line. Lines end in LF; a CR before it belongs to the ending.
class TextInputStream {
public:
    explicit TextInputStream(std::string content) : m_content(std::move(content)) {}

    /// The next line without its ending, bytes as they are; "" at the end of the file, again and again.
    std::string ReadLine();
    void Close();

private:
    std::string m_content;
    std::size_t m_next = 0;
};

} // namespace kirolane
