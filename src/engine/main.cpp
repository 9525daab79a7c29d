// An engine: plays what the program with the windows gives it, and dies with it. docs/processes.md says how.

#include "contract/backend/host.h"
#include "engine/box/box.h"
#include "engine/service.h"
#include "wire/channel.h"
#include "wire/sound_servers.h"

#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

/// Whoever has started it, and whose end is its end.
bool DieWith(pid_t parent) {
    return prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && getppid() == parent;
}

/// For the developer: not what a show should run on.
bool WantsBox() {
    const char* wanted = std::getenv("KIROLANE_ENGINE_BOX"); // NOLINT(concurrency-mt-unsafe): one thread
    return wanted == nullptr || std::string_view(wanted) != "off";
}

/// The calls that it may make, and with that its box.
void Close(std::string missing, std::string_view outputs, const kirolane::wire::Channel& channel) {
    const kirolane::box::CallLimits limits = kirolane::box::LimitCalls(kirolane::box::Outputs(outputs));
    const kirolane::wire::Descriptor connects(limits.connects);
    if (!missing.empty() && !limits.missing.empty())
        missing += "; ";
    channel.Send(kirolane::wire::Boxed{}, missing + limits.missing, connects.Get());
}

} // namespace

int main(int argc, char** argv) {
    using namespace kirolane;
    if (argc != 2) {
        WriteErrorLine("kirolane-engine: kirolane starts it, with its own process number");
        return EXIT_FAILURE;
    }
    if (!DieWith(static_cast<pid_t>(std::atol(argv[1]))))
        return EXIT_FAILURE;
    fcntl(wire::kEngineDescriptor, F_SETFD, FD_CLOEXEC);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGHUP, SIG_IGN);
    std::signal(SIGINT, SIG_IGN); // the terminal's: the program with the windows ends in its own way
    std::signal(SIGTERM, SIG_DFL);

    const bool boxed = WantsBox();
    if (boxed)
        wire::NamePulseServer();
    const std::string missing = boxed ? box::LimitFiles() : "";

    wire::Channel channel{wire::Descriptor(wire::kEngineDescriptor)};
    SendErrorLinesTo([&channel](std::string_view text) { channel.Send(wire::Line{}, text); });
    channel.Send(wire::Ready{});
    engine::Service service(channel);
    if (service.TakeAssignment()) {
        if (boxed)
            Close(missing, service.Outputs(), channel);
        service.Run();
    }
    // Files, decoders and devices go with the process; taking them down one by one could wait for a medium.
    std::_Exit(EXIT_SUCCESS);
}
