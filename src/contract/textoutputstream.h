#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace kirolane {

class TextSink;

/// Writes a text file. The text is gathered and written in one piece by Close, so that a program that ends in
/// between leaves the old file; a stream never closed writes nothing.
class TextOutputStream {
public:
    explicit TextOutputStream(std::unique_ptr<TextSink> sink);
    ~TextOutputStream();

    /// The text and LF.
    void WriteLine(std::string_view text);
    /// Writes. Throws FileWriteException, naming file and cause, if that fails; the second call does nothing.
    void Close();

private:
    std::unique_ptr<TextSink> m_sink;
    std::string m_content;
};

} // namespace kirolane
