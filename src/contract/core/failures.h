#pragma once

#include <string>
#include <utility>

namespace kirolane {

/// The lines that failing handlers leave on standard error, and what a failed file call has to add to them.
class Failures {
public:
    /// A handler begins: it may say again what the one before it has said.
    void BeginHandler() { m_saidOnce.clear(); }

    /// Remembers the newest failure of a file call, for the line that a failure of the running handler
    /// writes.
    void NoteFile(const std::string& path, const std::string& cause);
    /// Writes the failure of a handler or thread: its name, the exception, the file concerned if one is
    /// known. The line is returned.
    std::string Report(const std::string& what, const std::string& cause);
    /// A line, unless the running handler's newest such line was this one: twins open one file twice.
    void SayOnce(std::string text);

    /// A handler or a turn of a thread: its failures are its own, and those noted before stand again after
    /// it.
    class Scope {
    public:
        explicit Scope(Failures& failures)
            : m_failures(failures), m_before(std::exchange(failures.m_file, {})) {}
        ~Scope() { m_failures.m_file = std::move(m_before); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Failures& m_failures;
        std::string m_before;
    };

private:
    std::string m_file;
    std::string m_saidOnce;
};

} // namespace kirolane
