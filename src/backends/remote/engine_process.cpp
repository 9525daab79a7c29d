#include "backends/remote/engine_process.h"

#include "wire/messages.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

extern char** environ;

namespace kirolane::remote {

EngineProcess::EngineProcess(const std::string& program, wire::Descriptor channel, std::string& cause) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, channel.Get(), wire::kEngineDescriptor);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, wire::kEngineDescriptor + 1);
    posix_spawnattr_t attributes; // the thread that starts it may have blocked any signals
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::string name = "kirolane-engine";
    std::string parent = std::to_string(getpid());
    char* arguments[] = {name.data(), parent.data(), nullptr};
    const int error = posix_spawn(&m_process, program.c_str(), &actions, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        cause = program + ": " + std::generic_category().message(error);
        m_process = 0;
        return;
    }
    m_watch = wire::Descriptor(static_cast<int>(syscall(SYS_pidfd_open, m_process, 0)));
}

EngineProcess::EngineProcess(EngineProcess&& other) noexcept
    : m_process(std::exchange(other.m_process, 0)), m_watch(std::move(other.m_watch)) {}

EngineProcess& EngineProcess::operator=(EngineProcess&& other) noexcept {
    std::swap(m_process, other.m_process);
    std::swap(m_watch, other.m_watch);
    return *this;
}

EngineProcess::~EngineProcess() {
    Kill();
}

bool EngineProcess::IsTraced() const {
    std::ifstream status("/proc/" + std::to_string(m_process) + "/status");
    for (std::string word; status >> word;)
        if (word == "TracerPid:")
            return status >> word && word != "0";
    return false;
}

void EngineProcess::Kill() const {
    if (IsThere())
        kill(m_process, SIGKILL);
}

std::optional<std::string> EngineProcess::Reap() {
    int status = 0;
    pid_t ended = 0;
    do
        ended = waitpid(m_process, &status, WNOHANG);
    while (ended < 0 && errno == EINTR);
    if (ended == 0)
        return std::nullopt;
    m_process = 0;
    if (ended > 0 && WIFSIGNALED(status)) {
        const char* name = sigdescr_np(WTERMSIG(status));
        return "signal " + std::to_string(WTERMSIG(status)) + ", " + (name != nullptr ? name : "unknown");
    }
    return "exit status " + std::to_string(ended > 0 ? WEXITSTATUS(status) : -1);
}

std::string EngineProgram() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (self.parent_path() / "kirolane-engine").native();
}

} // namespace kirolane::remote
