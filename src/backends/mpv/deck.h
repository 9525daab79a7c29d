#pragma once

#include "backends/mpv/mpv_media.h"

#include <mpv/client.h>
#include <mpv/render.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kirolane::mpv {

/// What the messages of a deck's properties and replies are told apart by.
enum class Topic : std::uint64_t {
    None,
    // Observed.
    TimePos,    ///< seconds
    EofReached, ///< flag
    CoreIdle,   ///< flag
    VideoTrack, ///< there while a track with pictures is selected; a reply too, after FILE_LOADED
    Output,     ///< libmpv's name of where the sound goes
    // Replies.
    FileLoad,     ///< the command has been taken
    FileFormat,   ///< after FILE_LOADED
    FileDuration, ///< after FileFormat
    PixelFormat,  ///< after the first restart; there if a picture has been decoded
    Interlaced,   ///< after a restart: a flag of the picture that stands there
    SampleRate,   ///< after PixelFormat; there if sound has been decoded
    Settled,      ///< the flag eof-reached after a restart; the last
    TrackCount,   ///< at the end of the data
    EndPosition,  ///< time-pos, after TrackCount
    PausedAt,     ///< time-pos, asked for with a pause: of the picture that stays
    SoundPos,     ///< audio-pts, asked for while time-pos is silent; there while it plays sound
    Unpause,
    Container, ///< file-format, while the loading waits
    SeekLead,  ///< set according to that
};

class Shelf;

/// One warm libmpv player: the handle and its software renderer. The calls after the making never wait. Any
/// thread, but Next on one only.
class Deck {
public:
    /// Throws RuntimeException.
    Deck(const PlayerRole& role, const MpvOptions& options, std::shared_ptr<Shelf> shelf);
    /// May take long if the file does not answer. The callbacks must have been cleared.
    ~Deck();
    Deck(const Deck&) = delete;
    Deck& operator=(const Deck&) = delete;

    /// Called on libmpv's threads when Next has something; must only wake. Empty clears it.
    void SetWakeUp(std::function<void()> wakeUp);
    /// The next message; of id MPV_EVENT_NONE if there is none now.
    const mpv_event& Next() { return *mpv_wait_event(m_handle, 0); }

    /// With `pictures` false its sound alone. Pictures go through `filters`, a chain of libavfilter's; "" for
    /// none. Stands at `start` seconds, by a seek, if it is given.
    void Load(const std::string& uri, bool pictures, const std::string& filters, std::optional<double> start);
    void Stop();
    void SetPause(bool pause);
    void Seek(double seconds);
    /// Where sound goes, of this file and the next: libmpv's names of outputs, comma-separated, to be tried
    /// in turn.
    void SetOutputs(const std::string& outputs) { SetText("ao", outputs.c_str()); }
    /// Of the file now loaded: opens the first output that can be, of these, comma-separated.
    void TakeSoundUp(const std::string& outputs);
    /// Through a chain of libavfilter's.
    void SetFilters(const std::string& filters);
    void SetNumber(const char* property, double value, Topic topic = Topic::None);
    void Ask(const char* property, mpv_format format, Topic topic);
    /// On with the loading, which waits where the container is open and nothing has been sought in it.
    void GoOnLoading(std::uint64_t hook) { mpv_hook_continue(m_handle, hook); }

    [[nodiscard]] mpv_render_context* Renderer() const { return m_renderer; }

private:
    void SetText(const char* property, const char* value);

    std::shared_ptr<Shelf> m_shelf;
    mpv_handle* m_handle = nullptr;
    mpv_render_context* m_renderer = nullptr;
    std::function<void()> m_wakeUp;
};

} // namespace kirolane::mpv
