#pragma once

namespace kirolane::posix {

/// Lets nothing that becomes of the terminal, or of whoever reads standard output and standard error, stop or
/// stall the process: a reader that has gone or does not read, a full disk, a closed descriptor, a terminal
/// that is closed. What cannot be taken at once is lost. To be called first of all in main, before there are
/// threads. The process should end by std::quick_exit, which sees lines that are under way out.
void SecureStandardStreams();

} // namespace kirolane::posix
