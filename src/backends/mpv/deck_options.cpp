#include "backends/mpv/deck_options.h"

#include "contract/exceptions.h"

#include <span>

namespace kirolane::mpv {

const char* const kFormats = "mov,avi,asf,dv,mpeg,mpegts,mpegvideo,m4v,matroska,wav,w64,aiff,au,mp3,aac";

namespace {

struct Option {
    const char* name;
    const char* value;
};

// clang-format off
constexpr Option kAllRoles[] = {
    // Nothing of the user's own mpv, and no ways in or out but ours.
    {"config",                 "no"},
    {"load-scripts",           "no"},
    {"ytdl",                   "no"},
    {"osc",                    "no"},
    {"load-osd-console",       "no"},
    {"load-stats-overlay",     "no"},
    {"load-auto-profiles",     "no"},
    {"terminal",               "no"},
    {"input-default-bindings", "no"},
    {"input-vo-keyboard",      "no"},
    {"input-cursor",           "no"},
    {"input-media-keys",       "no"},
    {"osd-level",              "0"},
    {"osd-bar",                "no"},
    {"resume-playback",        "no"},
    {"save-position-on-quit",  "no"},
    // One file and never a second, whatever the file says; see also kFormats.
    {"sub-auto",               "no"},
    {"audio-file-auto",        "no"},
    {"cover-art-auto",         "no"},
    {"autoload-files",         "no"},
    {"ordered-chapters",       "no"},
    {"access-references",      "no"},
    {"load-unsafe-playlists",  "no"},
    {"demuxer",                "lavf"},
    // Moving pictures and sound, no text over them and no cover of an album.
    {"sid",                    "no"},
    {"audio-display",          "no"},
    // A player rests at the end of a movie, still running, until it is told.
    {"idle",                   "yes"},
    {"pause",                  "yes"},
    {"keep-open",              "yes"},
    {"keep-open-pause",        "no"},
    {"hr-seek",                "yes"},
    // The picture: stretched over its rectangle, on time, by the processor.
    {"vo",                     "libmpv"},
    {"hwdec",                  "no"},
    {"keepaspect",             "no"},
    {"video-rotate",           "no"}, // libmpv's renderer ends the program over a picture on its side; see MovieHeader
    {"video-timing-offset",    "0"},
    {"sws-fast",               "yes"},
    {"sws-scaler",             "fast-bilinear"},
    {"sws-allow-zimg",         "no"}, // four times as slow here
    // Memory: a local file needs no long reach, and no picture that could be shown is larger than 8192 x 8192.
    {"vd-lavc-o",              "max_pixels=67108864"},
    {"cache",                  "no"},
    {"demuxer-max-bytes",      "32MiB"},
    {"demuxer-max-back-bytes", "8MiB"},
};

constexpr Option kPreview[] = {
    {"mute",                    "yes"},
    {"audio-pitch-correction",  "no"}, // nobody hears it, and it would make jolts of small changes of speed
    {"vd-lavc-threads",         "1"},
    {"vd-lavc-fast",            "yes"},
    {"vd-lavc-skiploopfilter",  "all"},
};

constexpr Option kSound[] = {
    {"vd-lavc-threads",         "1"},
    {"vd-lavc-fast",            "yes"},
    {"vd-lavc-skiploopfilter",  "all"},
};
// clang-format on

void Check(int status, const char* name) {
    if (status < 0)
        throw RuntimeException(std::string("libmpv: option ") + name + ": " + mpv_error_string(status));
}

void Set(mpv_handle* handle, const char* name, const char* value) {
    Check(mpv_set_option_string(handle, name, value), name);
}

void SetAll(mpv_handle* handle, std::span<const Option> options) {
    for (const Option& option : options)
        Set(handle, option.name, option.value);
}

/// As a map: the comma of the list would break the option's string form.
void SetDemuxerLists(mpv_handle* handle) {
    char* keys[] = {const_cast<char*>("protocol_whitelist"), const_cast<char*>("format_whitelist")};
    mpv_node values[2] = {};
    values[0].format = values[1].format = MPV_FORMAT_STRING;
    values[0].u.string = const_cast<char*>("file");
    values[1].u.string = const_cast<char*>(kFormats);
    mpv_node_list list{2, values, keys};
    mpv_node map{};
    map.format = MPV_FORMAT_NODE_MAP;
    map.u.list = &list;
    Check(mpv_set_option(handle, "demuxer-lavf-o", MPV_FORMAT_NODE, &map), "demuxer-lavf-o");
}

} // namespace

void ApplyOptions(mpv_handle* handle, const PlayerRole& role, const MpvOptions& options) {
    SetAll(handle, kAllRoles);
    SetDemuxerLists(handle);
    const bool preview = role.role == Role::Preview;
    if (preview)
        SetAll(handle, kPreview);
    if (role.role == Role::Sound)
        SetAll(handle, kSound);
    Set(handle, "ao", (preview ? options.previewOutput : options.audioOutput).c_str());
    if (!role.streamName.empty())
        Set(handle, "audio-client-name", role.streamName.c_str());
    if (!options.audioFileBase.empty())
        Set(handle, "ao-pcm-file", (options.audioFileBase + "." + role.path + ".wav").c_str());
}

} // namespace kirolane::mpv
