// Picks the back ends, starts the logic and runs the event loop.

#include "backends/posix/command_line.h"
#include "backends/posix/posix_filesystem.h"
#include "backends/posix/posix_folders.h"
#include "backends/posix/quit_signals.h"
#include "backends/posix/standard_streams.h"
#include "backends/qt/qtwindows.h"
#include "backends/remote/remote_media.h"
#include "contract/backend/host.h"
#include "contract/core/runtime.h"
#include "logic/shell/start.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

/// What each player of the forms is there for.
kirolane::remote::RemoteOptions Players() {
    using kirolane::wire::Role;
    kirolane::remote::RemoteOptions options;
    options.roles = {
        {"Mainform.QTM", Role::Preview, "Kirolane preview"},
        {"MonitorForm.QTM", Role::Stage, "Kirolane movie"},
        {"MusicForm.QTM", Role::Sound, "Kirolane sound"},
    };
    return options;
}

/// Ends the process here and now. All that is to be kept has been written where it was changed, and taking
/// decoders, sound devices and windows down one by one could take longer than a person waits.
[[noreturn]] void End(int status) {
    std::quick_exit(status);
}

/// What the command line asks for; the process ends here where that is no start.
std::string DocumentAskedFor(int argc, char** argv) {
    constexpr int kUsage = 2;
    const auto asked = kirolane::posix::ReadCommandLine(argc, argv);
    if (!asked.fault.empty())
        kirolane::WriteErrorLine(asked.fault);
    if (asked.refused)
        End(kUsage);
    if (!asked.answer.empty()) {
        std::fputs(asked.answer.c_str(), stdout);
        std::fflush(stdout);
        End(EXIT_SUCCESS);
    }
    return asked.path;
}

} // namespace

int main(int argc, char** argv) {
    using namespace kirolane;
    posix::SecureStandardStreams();
    const std::string document = DocumentAskedFor(argc, argv);
    qt::QtWindows windows(argc, argv);
    posix::PosixFileSystem files(posix::HomeFolder(), posix::ExecutableFolder());
    if (const std::string failure = files.Prepare(); !failure.empty()) {
        WriteErrorLine("start: " + failure);
        windows.ShowStartFailure("start: " + failure);
        End(EXIT_FAILURE);
    }
    remote::RemoteMedia media(Players());
    Runtime runtime(windows, media, files);
    posix::WatchQuitSignals([&runtime] { runtime.Mail().Post([&runtime] { runtime.Quit(EXIT_SUCCESS); }); });

    std::unique_ptr<App> app;
    std::string failure;
    const auto start = [&app, &document] {
        app = StartKirolane();
        if (!document.empty())
            host::OpenDocument(document);
    };
    if (!runtime.Start(start, failure)) {
        windows.ShowStartFailure(failure);
        End(EXIT_FAILURE);
    }
    WriteLine("settings: " + SettingsFile());
    End(runtime.Run());
}
