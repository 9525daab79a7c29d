#pragma once

#include <string>
#include <string_view>

namespace kirolane::box {

/// The box of an engine, in two steps; docs/processes.md says what it promises. What a step cannot set up it
/// says, as a phrase for one line, and the process goes on without that.
///
/// Under the sanitizers the box is wider, since they need more than the product does: no limit on memory, and
/// what lies in /proc may be read.

/// Of libmpv's outputs which ones there are, by its list of names ("pipewire,pulse,alsa,null").
struct Outputs {
    explicit Outputs(std::string_view names);
    bool server = false; ///< PulseAudio or PipeWire
    bool card = false;   ///< ALSA
};

/// Of an engine's private memory, in bytes. 8K pictures of ten bits decoded by 16 threads take 2.5 to 3 GiB;
/// what needs more fails to be decoded.
inline constexpr unsigned long long kMostMemory = 4ULL << 30;

/// First, while there is one thread: no new rights, no core dumps, a limit on memory; no file but those of
/// the table in files.cpp, and none for writing; no TCP, no abstract sockets and no signals to the outside
/// where the kernel has these. `newestAbi`: none beyond this one is made use of.
/// Gives what is missing, "" if nothing is.
std::string LimitFiles(int newestAbi = 99);

struct CallLimits {
    /// Where the calls of connect wait for an answer, to be handed to SoundDoor and closed; -1 if the outputs
    /// need no server, or on failure. Until then, whoever calls connect waits.
    int connects = -1;
    std::string missing; ///< "" if nothing is
};

/// Second, once the libraries stand: no call of the kernel, of any thread, but those of the table in
/// calls.cpp.
CallLimits LimitCalls(Outputs outputs);

} // namespace kirolane::box
