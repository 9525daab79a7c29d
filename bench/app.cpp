#include "app.h"

#include "clocks.h"
#include "folders.h"

#include "backends/posix/posix_filesystem.h"
#include "backends/qt/qtwindows.h"
#include "backends/remote/remote_media.h"
#include "contract/core/runtime.h"
#include "contract/implicit_instance.h"
#include "logic/display/monitorform.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <clocale>
#include <filesystem>
#include <fstream>

namespace kirolane::bench {

namespace {

constexpr double kPatience = 60'000.0; ///< milliseconds

int g_argumentCount = 1;
char g_name[] = "kirolane_bench";
char* g_arguments[] = {g_name, nullptr};

remote::RemoteOptions OptionsWith(const std::string& sound) {
    remote::RemoteOptions options;
    options.roles = {{"Mainform.QTM", wire::Role::Preview, "Preview"},
                     {"MonitorForm.QTM", wire::Role::Stage, "Movie"},
                     {"MusicForm.QTM", wire::Role::Sound, "Sound"}};
    options.audioOutput = sound;
    options.program = KIROLANE_ENGINE;
    return options;
}

/// A home folder whose settings name the movie folder, press its button and no sound button.
std::string MakeHome(const std::string& folder, const std::string& movieFolder) {
    const std::string settings = folder + "/Library/Application Support/Kirolane/Setting";
    std::filesystem::create_directories(settings);
    std::ofstream file(settings + "/ES");
    for (const SettingLines& lines : kSettingLines) {
        for (std::int32_t n = lines.first; n <= lines.last; ++n) {
            if (n == line::kFirstFolder)
                file << ColonPath(movieFolder);
            else if (n != line::kSoundFolderNumber)
                file << (lines.initial.empty() ? "Root:" : lines.initial);
            file << '\n';
        }
    }
    return folder;
}

} // namespace

struct App::Parts {
    Parts(const std::string& movieFolder, Displays displays, const std::string& sound)
        : files(MakeHome(memory.Path(), movieFolder), memory.Path()),
          windows((Use(displays, memory.Path()), g_argumentCount), g_arguments), media(OptionsWith(sound)),
          runtime(windows, media, files) {}

    MemoryFolder memory;
    posix::PosixFileSystem files;
    qt::QtWindows windows;
    remote::RemoteMedia media;
    Runtime runtime;
    std::unique_ptr<kirolane::App> application;
};

App::App(const std::string& movieFolder, Displays displays, const std::string& sound)
    : m_parts(std::make_unique<Parts>(movieFolder, displays, sound)) {
    std::string failure = m_parts->files.Prepare();
    if (!failure.empty())
        throw RuntimeException(failure);
    if (!m_parts->runtime.Start([this] { m_parts->application = StartKirolane(); }, failure))
        throw RuntimeException(failure);
}

App::~App() = default;

Mainform& App::Console() const {
    return *Instance<Mainform>();
}

void App::Deliver(const std::function<void()>& handler) const {
    m_parts->runtime.DeliverNow(Console(), "bench", handler);
}

void App::Until(const std::function<bool()>& done) const {
    const StopWatch watch;
    QTimer wakeUp; // so that the wait ends even where nothing happens
    wakeUp.start(static_cast<int>(kPatience));
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (watch.Milliseconds() > kPatience)
            throw RuntimeException("what was waited for did not come");
    }
}

void App::For(int milliseconds) const {
    bool over = false;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, qApp, [&] { over = true; });
    Until([&] { return over; });
}

void App::Wake() const {
    QCoreApplication::eventDispatcher()->wakeUp();
}

void App::UntilScanned() const {
    Until([this] { return !Console().FolderThread()->Running(); });
}

MonitorForm& App::Monitor() const {
    return *Instance<MonitorForm>();
}

void App::OpenRow(std::int32_t row) const {
    Mainform& console = Console();
    Deliver([&] {
        console.StrGrid()->SetListIndex(row);
        console.StrGridDblClick_Action();
    });
    if (!console.FileOpen_Flag)
        throw RuntimeException("a clip did not open");
}

void App::Close() const {
    Deliver([this] { Console().QTM_Close_Action(); });
}

double App::CostOfPlaying(pid_t server) const {
    constexpr int kStart = 1000; // it has a cost of its own
    constexpr int kMeasured = 5000;
    const auto spent = [server] {
        return ProcessorMilliseconds() + (server == 0 ? 0 : ProcessorMilliseconds(server));
    };
    For(kStart);
    const double before = spent();
    For(kMeasured);
    return spent() - before;
}

void App::ListSounds(const std::string& folder) const {
    Mainform& console = Console();
    Deliver([&] {
        console.Setting_Data.Set(line::kFirstSoundFolder, ColonPath(folder));
        console.mFold_Action(1);
    });
    Until([&] { return !console.mFolderThread()->Running(); });
}

void App::OpenSound(std::int32_t row) const {
    Mainform& console = Console();
    Deliver([&] {
        console.mStrGrid()->SetListIndex(row);
        console.mStrGridDblClick_Action();
    });
    if (!console.mFileOpen_Flag)
        throw RuntimeException("a sound did not open");
}

void App::CloseSound() const {
    Deliver([this] { Console().mQTM_Close_Action(); });
}

} // namespace kirolane::bench
