#pragma once

#include "platform/backend/mediaengine.h"
#include "platform/mpv/deck.h"
#include "platform/mpv/media_file.h"
#include "platform/mpv/picture_path.h"
#include "platform/mpv/play_clock.h"
#include "platform/mpv/preparation.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kirolane::mpv {

class Conductor;

/// libmpv's name of the output that needs no device.
constexpr std::string_view kNoOutput = "null";

/// One player: what is wanted of it, what libmpv has been told, and what libmpv said. PlayerEngine's calls
/// are the main thread's and lock; everything else is the conductor's, under its lock.
class Player : public PlayerEngine {
public:
    Player(std::shared_ptr<Conductor> conductor, PlayerRole role);
    ~Player() override;
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // PlayerEngine.
    bool Load(const std::string& nativePath) override;
    void Release() override;
    [[nodiscard]] double Duration() const override;
    [[nodiscard]] double Position() const override;
    [[nodiscard]] double PositionAsOf(Instant at) const override;
    [[nodiscard]] bool AtEnd() const override;
    [[nodiscard]] FrameSource* Frames() override { return &m_pictures; }

    [[nodiscard]] PicturePath& Pictures() { return m_pictures; }

    enum class Phase : std::uint8_t { Empty, Opening, Open };

    [[nodiscard]] const PlayerRole& GetRole() const { return m_role; }
    [[nodiscard]] Phase GetPhase() const { return m_phase; }
    [[nodiscard]] const MediaFile& File() const { return m_file; }

    // Opening.

    /// Before the first file it needs no libmpv.
    [[nodiscard]] bool HasDeck() const { return m_deck != nullptr; }
    void Furnish(std::unique_ptr<Deck> deck);
    /// Sets libmpv to load the file, halted: itself, or the MIDI sound made of it. `ahead`: before anyone has
    /// asked for it. `resting`: the twin opens the same file, and decodes the pictures.
    void Open(const MediaFile& file, const Preparation& preparation, bool ahead, bool resting);
    /// It is what a Load asked for.
    void Claim() { m_ahead = false; }
    [[nodiscard]] bool Ahead() const { return m_ahead; }
    /// Nothing in it is wanted.
    [[nodiscard]] bool Free() const { return m_phase == Phase::Empty || m_released; }
    /// libmpv is done with the file before.
    [[nodiscard]] bool Taken() const { return m_started || !m_failure.empty(); }
    /// "" or why the file cannot be played.
    [[nodiscard]] const std::string& Failure() const { return m_failure; }
    /// libmpv has opened the container: format and duration are known.
    [[nodiscard]] bool Described() const { return m_described; }
    [[nodiscard]] const std::string& Format() const { return m_format; }
    /// 0 for unknown
    [[nodiscard]] double ContainerDuration() const {
        return m_header.seconds > 0.0 ? m_header.seconds : m_containerDuration;
    }
    /// A picture or sound of the file has been decoded.
    [[nodiscard]] bool Decoded() const { return m_decoded; }
    /// The load has succeeded. `exact`: an end well before that duration is a fault of the file.
    void Opened(double duration, bool exact, TimePoint now);
    /// Empties the player.
    void Unload();
    /// Takes a new deck in place of one that does not answer, and gives that back. Empties the player.
    std::unique_ptr<Deck> Replace(std::unique_ptr<Deck> deck);
    /// The same, but goes on in the new one where it is, without a sound device.
    std::unique_ptr<Deck> GoOnIn(std::unique_ptr<Deck> deck, TimePoint now);
    /// Starts together with those of the group once all stand where they are to be.
    void StartAgainWith(unsigned group, TimePoint now);

    // Playing.

    void Want(const PlayerOrder& order);
    /// An order that starts it or moves it while it runs.
    [[nodiscard]] bool StartsBy(const PlayerOrder& order) const;
    [[nodiscard]] unsigned Group() const { return m_group; }
    void SetGroup(unsigned group) { m_group = group; }
    [[nodiscard]] bool WantsStart() const { return m_phase == Phase::Open && m_running && !m_toldRunning; }
    /// Stands where it is to start from.
    [[nodiscard]] bool Ready() const { return !m_nextSeek && !m_flight; }
    void Start();
    /// It runs, and nothing else has been ordered.
    [[nodiscard]] bool Plays() const;
    [[nodiscard]] double Rate() const { return m_rate; }
    /// Seconds.
    [[nodiscard]] double PositionAt(TimePoint now) const { return m_clock.Read(now); }
    /// libmpv's reports have corrected it, or it does not wait for them.
    [[nodiscard]] bool PositionSettled() const { return m_rests ? m_clock.Running() : m_clock.Settled(); }
    /// Plays at that many times its rate.
    void Nudge(double factor, TimePoint now);
    /// Counts its position from there.
    void Shift(double seconds) { m_clock.Shift(seconds); }
    /// Tells libmpv what it need not wait for. `haltToSeek`: others are to go on with it after the seek.
    void Advance(bool haltToSeek, TimePoint now);
    /// When the wait for a seek ends, if there is one.
    [[nodiscard]] std::optional<TimePoint> Deadline() const;
    void GiveUpSeek(TimePoint now);

    // Sharing the twin's pictures.

    [[nodiscard]] bool WantsToRun() const { return m_running; }
    /// Halted, and come to where it was sent.
    [[nodiscard]] bool Stands() const { return m_phase == Phase::Open && !m_toldRunning && Ready(); }
    /// Where it stands, or is sent to, in seconds.
    [[nodiscard]] double AimAt(TimePoint now) const;
    /// The file plays with sound.
    [[nodiscard]] bool HasSound() const { return m_hasSound; }
    [[nodiscard]] bool AtEndAt(TimePoint now) const;
    /// Decodes no pictures; those of the twin, which plays the same file, are shown instead.
    void RestFromPictures(PicturePath& twin);
    [[nodiscard]] bool RestsFromPictures() const { return m_rests; }
    void ShowOwnPictures(TimePoint now);
    /// The twin has come to the end of its pictures and its sound.
    void EndWithTwin();

    // Its sound device.

    enum class Hearing : std::uint8_t {
        None,   ///< nothing in it is to be heard
        Silent, ///< it has sound, which goes nowhere
        Heard,
    };
    [[nodiscard]] Hearing GetHearing() const;
    /// It may wait for a sound device, or come to.
    [[nodiscard]] bool NearDevice() const { return m_role.role != Role::Preview && m_outputs != kNoOutput; }
    void SetOutputs(const std::string& outputs);
    /// When it will have run without a word for too long; its device may hold it up.
    [[nodiscard]] std::optional<TimePoint> DoubtedFrom() const;
    /// The device does not.
    void ClearDoubt(TimePoint now) { m_lastWord = now; }
    /// Has libmpv try these outputs, but at the end of a file, which it would have to come to once more.
    void TakeSoundUp(const std::string& outputs);

    /// Takes in everything that libmpv has to say.
    void Drain();

private:
    /// A seek on its way, or the opening's way to the first picture.
    struct Flight {
        double target = 0.0;
        TimePoint limit;
        bool settling = false; ///< it has come back; the last reply is awaited
    };

    void Take(const mpv_event& event, TimePoint now);
    void TakeProperty(Topic topic, const mpv_event_property& property, TimePoint now);
    void TakeReply(Topic topic, const mpv_event& event, TimePoint now);
    void TakeEnd(const mpv_event_end_file& end);
    void LoadFile(bool pictures, double start = 0.0);
    std::unique_ptr<Deck> Exchange(std::unique_ptr<Deck> deck);
    void SetResting(bool resting);
    void TakeRestart();
    void SetSeekLead();
    void Land(TimePoint now);
    void SetEof(bool eof, TimePoint now);
    /// libmpv's own position at the end of the data.
    void TakeEndPosition(double reached, TimePoint now);
    /// Rate and volume.
    void TellLevels(TimePoint now);
    void TellEnd(const std::string& cause);
    void Halt(TimePoint now);
    void Reset();

    std::shared_ptr<Conductor> m_conductor;
    const PlayerRole m_role;
    std::unique_ptr<Deck> m_deck; ///< null until Furnish
    PicturePath m_pictures;

    Phase m_phase = Phase::Empty;
    MediaFile m_file;
    std::string m_uri;                 ///< what libmpv loads in its name
    std::shared_ptr<MidiSound> m_midi; ///< what the file has been made into, if it is one
    MovieHeader m_header;
    bool m_ahead = false;
    bool m_released = false;
    double m_duration = 0.0;
    bool m_exact = false;

    // The opening.
    int m_loadsUnderWay = 0; ///< commands that libmpv has not yet taken
    bool m_askedForPictures = false;
    bool m_started = false;
    std::int64_t m_entry = 0; ///< libmpv's number of the file that it started
    bool m_described = false;
    bool m_decoded = false;
    bool m_hasSound = false;
    std::string m_format;
    double m_containerDuration = 0.0;
    std::string m_failure;

    // What is wanted.
    bool m_running = false;
    double m_rate = 1.0;
    double m_nudge = 1.0; ///< times the rate
    std::int32_t m_volume = 256;
    std::optional<double> m_nextSeek; ///< not yet told
    unsigned m_group = 0;             ///< players of one group start together

    // What libmpv has been told.
    bool m_toldRunning = false;
    double m_toldRate = 1.0; ///< with the nudge
    std::int32_t m_toldVolume = 256;
    double m_toldSeekLead = 0.0;
    std::string m_outputs;
    std::optional<Flight> m_flight;
    std::optional<double> m_standsAt; ///< it has not run since it was set there

    // What it said.
    PlayClock m_clock;
    std::string m_output; ///< where its sound goes or went last
    TimePoint m_lastWord; ///< of its position, or its start
    bool m_eof = false;
    bool m_endTold = false;
    bool m_moreTracks = false; ///< than the one that plays, maybe longer ones

    bool m_rests = false;    ///< from decoding pictures
    bool m_soundOut = false; ///< resting, it has come to the end of its sound; pictures may go on
};

} // namespace kirolane::mpv
