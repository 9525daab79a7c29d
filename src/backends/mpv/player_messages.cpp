#include "backends/mpv/player.h"

#include "backends/mpv/conductor.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

namespace kirolane::mpv {

namespace {

/// An end of the data so much ahead of the Duration is a fault of the file, in seconds.
constexpr double kEarly = 1.0;

/// Streams without an index: libavformat lands anywhere near the target, often past the last whole picture
/// before it. libmpv then has to look for one so many seconds earlier.
constexpr std::string_view kLooseSeeks[] = {"mpeg", "mpegts", "mpegvideo", "m4v"};
constexpr double kLooseSeekLead = 1.5;

/// Why a file cannot be played, as a phrase.
std::string CauseOf(int error) {
    switch (error) {
    case MPV_ERROR_UNKNOWN_FORMAT:
        return "is of no known format";
    case MPV_ERROR_LOADING_FAILED:
        return "cannot be read";
    default:
        return "nothing in it can be played";
    }
}

template <class T> const T* ValueOf(const mpv_event_property& property, mpv_format format) {
    return property.format == format ? static_cast<const T*>(property.data) : nullptr;
}

bool Flag(const mpv_event_property& property) {
    const int* flag = ValueOf<int>(property, MPV_FORMAT_FLAG);
    return flag != nullptr && *flag != 0;
}

} // namespace

void Player::Drain() {
    while (m_deck != nullptr) {
        const mpv_event& event = m_deck->Next();
        if (event.event_id == MPV_EVENT_NONE)
            return;
        Take(event, Clock::now());
    }
}

void Player::Take(const mpv_event& event, TimePoint now) {
    const auto topic = static_cast<Topic>(event.reply_userdata);
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
        if (topic == Topic::FileLoad && --m_loadsUnderWay == 0 && event.error < 0)
            m_found.failure = CauseOf(event.error);
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        TakeProperty(topic, *static_cast<const mpv_event_property*>(event.data), now);
        break;
    case MPV_EVENT_GET_PROPERTY_REPLY:
    case MPV_EVENT_SET_PROPERTY_REPLY:
        TakeReply(topic, event, now);
        break;
    case MPV_EVENT_START_FILE:
        if (m_held != Held::Awaited || m_loadsUnderWay > 0)
            break;
        m_held = Held::Started;
        m_entry = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id;
        m_pictures.FileStarted();
        break;
    case MPV_EVENT_HOOK:
        m_hook = static_cast<const mpv_event_hook*>(event.data)->id;
        m_deck->Ask("file-format", MPV_FORMAT_STRING, Topic::Container);
        break;
    case MPV_EVENT_FILE_LOADED:
        if (!IsOfThisFile())
            break;
        m_deck->Ask("current-tracks/video/id", MPV_FORMAT_INT64, Topic::VideoTrack);
        m_deck->Ask("file-format", MPV_FORMAT_STRING, Topic::FileFormat);
        m_deck->Ask("duration", MPV_FORMAT_DOUBLE, Topic::FileDuration);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        TakeRestart();
        break;
    case MPV_EVENT_VIDEO_RECONFIG:
        if (m_found.pictureless && IsOfThisFile())
            m_deck->Ask("video-params/pixelformat", MPV_FORMAT_STRING, Topic::PixelFormat);
        break;
    case MPV_EVENT_END_FILE:
        TakeEnd(*static_cast<const mpv_event_end_file*>(event.data));
        break;
    default:
        break;
    }
}

void Player::TakeProperty(Topic topic, const mpv_event_property& property, TimePoint now) {
    if (topic == Topic::Output) { // the deck's, whatever is loaded
        if (const auto* output = ValueOf<char*>(property, MPV_FORMAT_STRING))
            m_output = *output;
        return;
    }
    if (!IsOfThisFile())
        return;
    switch (topic) {
    case Topic::TimePos:
        if (const auto* seconds = ValueOf<double>(property, MPV_FORMAT_DOUBLE);
            seconds != nullptr && m_told.running && !m_flight) {
            m_picture = *seconds;
            m_clock.Observe(*seconds, now);
            m_lastWord = now;
        }
        break;
    case Topic::EofReached:
        SetEof(Flag(property), now);
        break;
    case Topic::CoreIdle:
        // Data that does not come in time: the picture stands, and so does the position.
        if (!m_told.running || m_flight)
            break;
        if (Flag(property))
            m_clock.Halt(now);
        else
            m_clock.Start(now);
        break;
    case Topic::VideoTrack:
        // A change may be told late, when it was that of the file before; an answer is never late.
        m_deck->Ask("current-tracks/video/id", MPV_FORMAT_INT64, Topic::VideoTrack);
        break;
    default:
        break;
    }
}

void Player::TakeReply(Topic topic, const mpv_event& event, TimePoint now) {
    if (topic == Topic::Unpause) {
        if (m_told.running && !m_flight && !m_clock.Running())
            m_clock.Start(now);
        return;
    }
    if (topic == Topic::SeekLead)
        m_deck->GoOnLoading(m_hook);
    if (event.event_id != MPV_EVENT_GET_PROPERTY_REPLY)
        return;
    const auto& property = *static_cast<const mpv_event_property*>(event.data);
    const bool known = event.error >= 0;
    if (topic == Topic::Container) {
        const auto* format = ValueOf<char*>(property, MPV_FORMAT_STRING);
        SetSeekLead(known && format != nullptr ? *format : "");
    }
    if (!IsOfThisFile())
        return;
    switch (topic) {
    case Topic::VideoTrack:
        m_pictures.SetHasPicture(known && !m_found.pictureless);
        break;
    case Topic::FileFormat:
        if (const auto* format = ValueOf<char*>(property, MPV_FORMAT_STRING); known && format != nullptr)
            m_found.format = *format;
        break;
    case Topic::FileDuration:
        if (const auto* seconds = ValueOf<double>(property, MPV_FORMAT_DOUBLE); known && seconds != nullptr)
            m_found.seconds = *seconds;
        m_found.described = true;
        break;
    case Topic::PixelFormat:
        TakePixelFormat(known);
        break;
    case Topic::Interlaced:
        if (known && Flag(property))
            TakeInterlaced();
        break;
    case Topic::SampleRate:
        m_found.sound = known;
        if (known && !m_found.decoded &&
            (m_withPictures ? m_pictures.HasPicture() || m_header.pictures : m_lastTry)) {
            m_found.pictureless = true; // its window stays black, rather than show the file before
            m_pictures.SetHasPicture(false);
            m_conductor->TellOnce(m_file, "its pictures cannot be decoded");
        }
        m_found.decoded = m_found.decoded || known;
        if (!m_found.decoded)
            m_found.failure = CauseOf(0);
        break;
    case Topic::Settled:
        if (!m_flight || !m_flight->settling)
            break;
        Land(now);
        SetEof(known && Flag(property), now);
        break;
    case Topic::TrackCount:
        if (const auto* count = ValueOf<std::int64_t>(property, MPV_FORMAT_INT64))
            m_end.moreTracks = !m_withPictures && *count > 1;
        break;
    case Topic::EndPosition:
        if (const auto* seconds = ValueOf<double>(property, MPV_FORMAT_DOUBLE))
            TakeEndPosition(*seconds, now);
        break;
    case Topic::PausedAt:
        if (const auto* seconds = ValueOf<double>(property, MPV_FORMAT_DOUBLE);
            known && seconds != nullptr && !m_told.running && !m_flight)
            m_picture = *seconds;
        break;
    case Topic::SoundPos:
        if (!m_told.running || m_flight)
            break;
        if (const auto* seconds = ValueOf<double>(property, MPV_FORMAT_DOUBLE); known && seconds != nullptr)
            m_clock.Observe(*seconds, now);
        else
            m_clock.Trust(now); // without sound pictures may be far between
        break;
    default:
        break;
    }
}

void Player::TakePixelFormat(bool known) {
    if (!known)
        return;
    m_found.decoded = true;
    m_pictures.FirstPictureTaken();
    if (std::exchange(m_found.pictureless, false))
        m_deck->Ask("current-tracks/video/id", MPV_FORMAT_INT64, Topic::VideoTrack);
}

void Player::TakeInterlaced() {
    if (m_found.interlaced)
        return;
    m_found.interlaced = true;
    m_deck->SetFilters(Filters());
    if (!m_flight || !m_flight->settling)
        return;
    m_flight->settling = false; // what it stands at is decoded anew
    m_deck->Seek(m_flight->picture);
}

void Player::SetSeekLead(std::string_view format) {
    const bool loose =
        std::find(std::begin(kLooseSeeks), std::end(kLooseSeeks), format) != std::end(kLooseSeeks);
    m_deck->SetNumber("hr-seek-demuxer-offset", loose ? kLooseSeekLead : 0.0, Topic::SeekLead);
}

void Player::TakeRestart() {
    if (!IsOfThisFile())
        return;
    if (m_flight)
        m_flight->settling = true;
    if (!m_found.decoded) {
        // Not the picture's size, which libmpv knows from the header too.
        m_deck->Ask("video-params/pixelformat", MPV_FORMAT_STRING, Topic::PixelFormat);
        m_deck->Ask("audio-params/samplerate", MPV_FORMAT_INT64, Topic::SampleRate);
    }
    if (!m_found.interlaced)
        m_deck->Ask("video-frame-info/interlaced", MPV_FORMAT_FLAG, Topic::Interlaced);
    m_deck->Ask("eof-reached", MPV_FORMAT_FLAG, Topic::Settled);
}

void Player::TakeEnd(const mpv_event_end_file& end) {
    if (!IsOfThisFile() || end.playlist_entry_id != m_entry)
        return;
    m_held = Held::Nothing;
    const std::string cause = CauseOf(end.error);
    if (m_phase != Phase::Empty && !m_found.decoded && !m_lastTry && !m_midi &&
        (end.error == MPV_ERROR_NOTHING_TO_PLAY || end.error == MPV_ERROR_GENERIC)) {
        TryOtherWay();
    } else if (m_phase == Phase::Opening) {
        m_found.failure = cause;
    } else if (m_phase == Phase::Open) {
        // Given up in the middle. It is the end for whoever waits for one.
        TellEnd(cause);
        m_flight.reset();
        m_nextSeek.reset();
        m_end.reached = true;
        m_end.gaveUp = true;
    }
}

// It has no sound: its pictures are its clock. Or no decoder knows its pictures, which libmpv takes for the
// end whatever there is to hear.
void Player::TryOtherWay() {
    m_lastTry = true;
    LoadFile(!m_withPictures, m_flight ? m_flight->picture : 0.0);
}

void Player::SetEof(bool eof, TimePoint now) {
    const bool wasAtEnd = AtEndAt(now);
    m_end.reached = eof;
    if (wasAtEnd || !AtEndAt(now) || !m_length.exact || m_end.told)
        return;
    m_deck->Ask("track-list/count", MPV_FORMAT_INT64, Topic::TrackCount);
    m_deck->Ask("time-pos", MPV_FORMAT_DOUBLE, Topic::EndPosition);
}

void Player::TakeEndPosition(double reached, TimePoint now) {
    reached = std::max(reached, m_clock.Read(now));
    if (!AtEndAt(now) || m_end.told || m_end.moreTracks || m_length.seconds - reached < kEarly)
        return;
    char text[96];
    std::snprintf(text, sizeof text, "the data ends at %.1f s of %.1f s", reached, m_length.seconds);
    TellEnd(text);
}

void Player::TellEnd(const std::string& cause) {
    m_end.told = true;
    m_conductor->TellOnce(m_file, cause);
}

} // namespace kirolane::mpv
