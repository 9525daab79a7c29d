#include "ear.h"

#include "contract/exceptions.h"

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <pulse/pulseaudio.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kirolane::bench {

namespace {

constexpr int kRate = 48000;
constexpr int kPart = kRate / 200 * 2; ///< bytes that the server hands over at a time
constexpr int kLoud = 4000;            ///< of 32768: a beep
constexpr int kQuiet = kRate / 10;     ///< samples that lie before each at least
constexpr auto kPatience = std::chrono::seconds(10);

} // namespace

double SteadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

SoundServer::SoundServer(const std::string& folder) : m_address("unix:" + folder + "/pulse") {
    Start();
}

void SoundServer::Start() {
    std::string words[] = {"pulseaudio",
                           "-n",
                           "--daemonize=no",
                           "--use-pid-file=no",
                           "--exit-idle-time=-1",
                           "--log-target=null",
                           "-Lmodule-native-protocol-unix auth-anonymous=1 socket=" + m_address.substr(5),
                           "-Lmodule-null-sink sink_name=stage rate=48000"};
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (::posix_spawnp(&m_process, "pulseaudio", nullptr, nullptr, arguments.data(), environ) != 0)
        throw RuntimeException("pulseaudio cannot be started");
}

void SoundServer::Stop() {
    if (m_process == 0)
        return;
    ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
    m_process = 0;
}

struct Ear::Stream {
    explicit Stream(const std::string& address) : loop(pa_threaded_mainloop_new()) {
        pa_threaded_mainloop_start(loop);
        const auto deadline = std::chrono::steady_clock::now() + kPatience;
        while (!Connect(address))
            if (std::chrono::steady_clock::now() > deadline)
                throw RuntimeException("the sound server does not answer");
    }
    ~Stream() {
        Disconnect();
        pa_threaded_mainloop_stop(loop);
        pa_threaded_mainloop_free(loop);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// False where there is no server yet.
    bool Connect(const std::string& address) {
        pa_threaded_mainloop_lock(loop);
        context = pa_context_new(pa_threaded_mainloop_get_api(loop), "ear");
        pa_context_set_state_callback(context, &Signal<pa_context>, this);
        pa_context_connect(context, address.c_str(), PA_CONTEXT_NOAUTOSPAWN, nullptr);
        while (PA_CONTEXT_IS_GOOD(pa_context_get_state(context)) &&
               pa_context_get_state(context) != PA_CONTEXT_READY)
            pa_threaded_mainloop_wait(loop);
        bool ready = pa_context_get_state(context) == PA_CONTEXT_READY;
        if (ready) {
            const pa_sample_spec format{PA_SAMPLE_S16LE, kRate, 1};
            stream = pa_stream_new(context, "ear", &format, nullptr);
            pa_stream_set_state_callback(stream, &Signal<pa_stream>, this);
            pa_stream_set_read_callback(
                stream, [](pa_stream*, std::size_t, void* self) { static_cast<Stream*>(self)->Read(); },
                this);
            const pa_buffer_attr parts{~0U, ~0U, ~0U, ~0U, kPart};
            const auto flags = static_cast<pa_stream_flags_t>(
                PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE);
            pa_stream_connect_record(stream, "stage.monitor", &parts, flags);
            while (PA_STREAM_IS_GOOD(pa_stream_get_state(stream)) &&
                   (pa_stream_get_state(stream) != PA_STREAM_READY || heard == 0))
                pa_threaded_mainloop_wait(loop);
            ready = pa_stream_get_state(stream) == PA_STREAM_READY;
        }
        pa_threaded_mainloop_unlock(loop);
        if (!ready)
            Disconnect();
        return ready;
    }
    void Disconnect() {
        pa_threaded_mainloop_lock(loop);
        if (stream != nullptr) {
            pa_stream_set_state_callback(stream, nullptr, nullptr);
            pa_stream_set_read_callback(stream, nullptr, nullptr);
            pa_stream_disconnect(stream);
            pa_stream_unref(std::exchange(stream, nullptr));
        }
        pa_context_set_state_callback(context, nullptr, nullptr);
        pa_context_disconnect(context);
        pa_context_unref(context);
        pa_threaded_mainloop_unlock(loop);
    }
    template <class Source> static void Signal(Source*, void* self) {
        pa_threaded_mainloop_signal(static_cast<Stream*>(self)->loop, 0);
    }

    void Read() {
        const void* data = nullptr;
        std::size_t bytes = 0;
        while (pa_stream_readable_size(stream) > 0 && pa_stream_peek(stream, &data, &bytes) == 0 &&
               bytes > 0) {
            const auto* samples = static_cast<const std::int16_t*>(data);
            for (std::size_t i = 0; i < bytes / sizeof *samples; ++i, ++heard) {
                if (data == nullptr || std::abs(samples[i]) < kLoud)
                    continue;
                if (heard - loud > kQuiet)
                    Beep();
                loud = heard;
            }
            pa_stream_drop(stream);
        }
        pa_threaded_mainloop_signal(loop, 0);
    }
    /// The sample that has been heard.
    void Beep() {
        pa_usec_t now = 0; // in the recording, of the sample that is at the loudspeaker
        if (pa_stream_get_time(stream, &now) == 0)
            beeps.push_back(SteadyMilliseconds() - static_cast<double>(now) / 1e3 +
                            static_cast<double>(heard) * 1e3 / kRate);
    }

    pa_threaded_mainloop* loop;
    pa_context* context = nullptr;
    pa_stream* stream = nullptr;
    // Under the loop's lock.
    std::int64_t heard = 0;
    std::int64_t loud = -kRate;
    std::vector<double> beeps;
};

Ear::Ear(const std::string& address) : m_stream(std::make_unique<Stream>(address)) {}

Ear::~Ear() = default;

std::vector<double> Ear::Take() {
    pa_threaded_mainloop_lock(m_stream->loop);
    auto beeps = std::exchange(m_stream->beeps, {});
    pa_threaded_mainloop_unlock(m_stream->loop);
    return beeps;
}

} // namespace kirolane::bench
