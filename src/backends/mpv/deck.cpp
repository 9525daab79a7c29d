#include "backends/mpv/deck.h"

#include "backends/mpv/deck_options.h"
#include "backends/mpv/shelf.h"
#include "contract/exceptions.h"

#include <cstdio>
#include <iterator>

namespace kirolane::mpv {

namespace {

constexpr std::uint64_t Id(Topic topic) {
    return static_cast<std::uint64_t>(topic);
}

struct Observed {
    const char* name;
    mpv_format format;
    Topic topic;
};

constexpr Observed kObserved[] = {
    {"time-pos", MPV_FORMAT_DOUBLE, Topic::TimePos},
    {"eof-reached", MPV_FORMAT_FLAG, Topic::EofReached},
    {"core-idle", MPV_FORMAT_FLAG, Topic::CoreIdle},
    {"current-tracks/video/id", MPV_FORMAT_INT64, Topic::VideoTrack},
    {"current-ao", MPV_FORMAT_STRING, Topic::Output},
};

/// As libmpv reads them.
std::string Seconds(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%.9f", seconds);
    return text;
}

void Check(int status, const char* what) {
    if (status < 0)
        throw RuntimeException(std::string("libmpv: ") + what + ": " + mpv_error_string(status));
}

std::string Graph(const std::string& filters) {
    return filters.empty() ? "" : "lavfi=[" + filters + "]";
}

} // namespace

Deck::Deck(const PlayerRole& role, const MpvOptions& options, std::shared_ptr<Shelf> shelf)
    : m_shelf(std::move(shelf)), m_handle(mpv_create()) {
    if (m_handle == nullptr)
        throw RuntimeException("libmpv does not start (it needs the numeric locale C)");
    try {
        ApplyOptions(m_handle, role, options);
        Check(mpv_initialize(m_handle), "start");
        Check(OpenFromShelf(m_handle, *m_shelf), "media");
        Check(mpv_hook_add(m_handle, Id(Topic::Container), "on_preloaded", 0), "hook");
        for (const Observed& observed : kObserved)
            Check(mpv_observe_property(m_handle, Id(observed.topic), observed.name, observed.format),
                  observed.name);
        mpv_render_param params[] = {
            {MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_SW)},
            {MPV_RENDER_PARAM_INVALID, nullptr},
        };
        Check(mpv_render_context_create(&m_renderer, m_handle, params), "software renderer");
    } catch (...) {
        mpv_terminate_destroy(m_handle);
        throw;
    }
}

Deck::~Deck() {
    // In this order: libmpv aborts if the renderer outlives its player.
    mpv_render_context_free(m_renderer);
    mpv_terminate_destroy(m_handle);
}

void Deck::SetWakeUp(std::function<void()> wakeUp) {
    mpv_set_wakeup_callback(m_handle, nullptr, nullptr);
    m_wakeUp = std::move(wakeUp);
    if (m_wakeUp)
        mpv_set_wakeup_callback(
            m_handle, [](void* self) { static_cast<Deck*>(self)->m_wakeUp(); }, this);
}

void Deck::Load(const std::string& uri, bool pictures, const std::string& filters,
                std::optional<double> start) {
    std::string options = pictures ? "vid=auto" : "vid=no";
    if (start)
        options += ",start=" + Seconds(*start);
    if (const std::string graph = Graph(filters); !graph.empty())
        options += ",vf=%" + std::to_string(graph.size()) + "%" + graph; // whatever commas are in it
    // By name: from libmpv 0.38 on another argument stands before the options.
    struct {
        const char* name;
        const char* value;
    } const arguments[] = {
        {"name", "loadfile"},
        {"url", uri.c_str()},
        {"flags", "replace"},
        {"options", options.c_str()},
    };
    constexpr auto kCount = std::size(arguments);
    char* names[kCount];
    mpv_node values[kCount];
    for (std::size_t i = 0; i < kCount; ++i) {
        names[i] = const_cast<char*>(arguments[i].name);
        values[i].format = MPV_FORMAT_STRING;
        values[i].u.string = const_cast<char*>(arguments[i].value);
    }
    mpv_node_list list{static_cast<int>(kCount), values, names};
    mpv_node command;
    command.format = MPV_FORMAT_NODE_MAP;
    command.u.list = &list;
    mpv_command_node_async(m_handle, Id(Topic::FileLoad), &command);
}

void Deck::Stop() {
    const char* command[] = {"stop", nullptr};
    mpv_command_async(m_handle, Id(Topic::None), command);
}

void Deck::SetPause(bool pause) {
    int flag = pause ? 1 : 0;
    mpv_set_property_async(m_handle, Id(pause ? Topic::None : Topic::Unpause), "pause", MPV_FORMAT_FLAG,
                           &flag);
}

void Deck::Seek(double seconds) {
    const std::string target = Seconds(seconds);
    const char* command[] = {"seek", target.c_str(), "absolute+exact", nullptr};
    mpv_command_async(m_handle, Id(Topic::None), command);
}

void Deck::TakeSoundUp(const std::string& outputs) {
    // By way of no sound at all: the command to open it anew would hold the picture up for half a second.
    SetText("aid", "no");
    SetOutputs(outputs);
    SetText("aid", "auto");
}

void Deck::SetText(const char* property, const char* value) {
    mpv_set_property_async(m_handle, Id(Topic::None), property, MPV_FORMAT_STRING, &value);
}

void Deck::SetFilters(const std::string& filters) {
    SetText("file-local-options/vf", Graph(filters).c_str());
}

void Deck::SetNumber(const char* property, double value, Topic topic) {
    mpv_set_property_async(m_handle, Id(topic), property, MPV_FORMAT_DOUBLE, &value);
}

void Deck::Ask(const char* property, mpv_format format, Topic topic) {
    mpv_get_property_async(m_handle, Id(topic), property, format);
}

} // namespace kirolane::mpv
