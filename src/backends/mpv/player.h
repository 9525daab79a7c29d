#pragma once

#include "backends/mpv/deck.h"
#include "backends/mpv/duration_probe.h"
#include "backends/mpv/media_file.h"
#include "backends/mpv/mpv_media.h"
#include "backends/mpv/picture_path.h"
#include "backends/mpv/play_clock.h"
#include "backends/mpv/preparation.h"
#include "contract/backend/mediaengine.h"
#include "wire/board.h"

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
    bool Load(const LoadRequest& request);
    /// What its Position is, and how that goes on.
    [[nodiscard]] wire::Motion GetMotion() const;
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
    /// Null while it is empty.
    [[nodiscard]] const MediumPointer& GetMedium() const { return m_medium; }

    // Opening.

    /// Before the first file it needs no libmpv.
    [[nodiscard]] bool HasDeck() const { return m_deck != nullptr; }
    void Furnish(std::unique_ptr<Deck> deck);
    /// Sets libmpv to load the file, halted there, in seconds: itself, or the MIDI sound made of it. `ahead`:
    /// before anyone has asked for it.
    void Open(const MediumPointer& medium, const Preparation& preparation, const LoadRequest& request,
              bool ahead);
    /// Opens it without libmpv, to rest at `lead`, which stands about there in the same file or is about to.
    void OpenAtRest(const MediumPointer& medium, const Preparation& preparation, Player& lead, double from);
    /// It is what a Load asked for.
    void Claim() { m_demand = Demand::Asked; }
    [[nodiscard]] bool Ahead() const { return m_demand == Demand::Ahead; }
    /// Nothing in it is wanted.
    [[nodiscard]] bool Free() const { return m_phase == Phase::Empty || m_demand == Demand::Released; }
    /// libmpv is done with the file before.
    [[nodiscard]] bool Taken() const { return m_held == Held::Started || !m_found.failure.empty(); }
    /// "" or why the file cannot be played.
    [[nodiscard]] const std::string& Failure() const { return m_found.failure; }
    /// libmpv has opened the container: format and duration are known.
    [[nodiscard]] bool Described() const { return m_found.described; }
    [[nodiscard]] const std::string& Format() const { return m_found.format; }
    /// 0 for unknown
    [[nodiscard]] double ContainerDuration() const {
        return m_header.seconds > 0.0 ? m_header.seconds : m_found.seconds;
    }
    /// A picture or sound of the file has been decoded, which libmpv says once all that it plays is ready.
    [[nodiscard]] bool Decoded() const { return m_found.decoded; }
    /// The load has succeeded.
    void Opened(const std::string& format, const Length& length, TimePoint now);
    /// Empties the player.
    void Unload();
    /// Takes a new deck in place of one that does not answer, and gives that back. Empties the player.
    std::unique_ptr<Deck> Replace(std::unique_ptr<Deck> deck);
    /// The same, but goes on in the new one where it is, without a sound device.
    std::unique_ptr<Deck> GoOnIn(std::unique_ptr<Deck> deck, TimePoint now);

    // Playing.

    void Want(const PlayerOrder& order);
    /// An order that starts it or moves it while it runs.
    [[nodiscard]] bool StartsBy(const PlayerOrder& order) const;
    [[nodiscard]] unsigned Group() const { return m_group; }
    void SetGroup(unsigned group) { m_group = group; }
    [[nodiscard]] bool WantsStart() const {
        return m_phase == Phase::Open && !Rests() && m_wanted.running && !m_told.running;
    }
    /// Stands where it is to start from, or has been waited for long enough.
    [[nodiscard]] bool Ready() const { return !m_nextSeek && (!m_flight || m_flight->late); }
    void Start();
    /// Tells libmpv what it need not wait for. `haltToSeek`: others are to go on with it after the seek.
    void Advance(bool haltToSeek, TimePoint now);
    /// When time alone is to be looked at again: the wait for a seek ends, or reports have ceased.
    [[nodiscard]] std::optional<TimePoint> Deadline() const;
    void TakeTime(TimePoint now);

    // Resting at the twin.

    [[nodiscard]] bool WantsToRun() const { return m_wanted.running; }
    [[nodiscard]] double Rate() const { return m_wanted.rate; }
    /// Plays on by itself, without an order under way.
    [[nodiscard]] bool UnderWay() const { return m_told.running && Ready(); }
    /// Its pictures change, whoever decodes them.
    [[nodiscard]] bool Plays() const {
        return m_phase == Phase::Open && m_wanted.running && (Rests() || (UnderWay() && !m_end.reached));
    }
    /// Where it stands, or is sent to, in seconds.
    [[nodiscard]] double AimAt(TimePoint now) const;
    /// The furthest that is read, in seconds, until libmpv tells of the end.
    [[nodiscard]] double LastBeforeEnd() const;
    /// Where a seek finds the picture that it shows; while it runs, its position.
    [[nodiscard]] double PictureAt(TimePoint now) const;
    [[nodiscard]] bool AtEndAt(TimePoint now) const;
    /// Empties its libmpv. Position, end and pictures are those of `lead`, which plays the same file, the
    /// position less the distance at which they are.
    void RestAt(Player& lead, TimePoint now);
    [[nodiscard]] bool Rests() const { return m_rest.has_value(); }
    [[nodiscard]] bool RestsAt(const Player& lead) const { return m_rest && m_rest->lead == &lead; }
    /// About to be ordered: whatever comes to the lead leaves this one where it is now, until Settle.
    void Hold(TimePoint now);
    /// It has been ordered: keeps the distance between where orders have sent the two.
    void Settle(TimePoint now);
    /// Loads its file and plays for itself, from its own position; shows that picture there if it stands.
    void Wake(double picture, TimePoint now);

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
        double picture = 0.0; ///< where libmpv is sent: the target, or the picture that is to stand there
        TimePoint limit;
        bool late = false;     ///< not waited for any more
        bool settling = false; ///< it has come back; the last reply is awaited
    };

    /// Whether what it holds is wanted.
    enum class Demand : std::uint8_t { Asked, Ahead, Released };
    /// How far libmpv has come with the file.
    enum class Held : std::uint8_t { Nothing, Awaited, Started };
    /// What libmpv said of the file.
    struct Findings {
        bool described = false;   ///< the container: format and seconds
        bool decoded = false;     ///< a picture or a sound
        bool pictureless = false; ///< none of its pictures could be decoded so far
        bool interlaced = false;  ///< its pictures are, and go through the filter for that
        bool sound = false;       ///< it has some
        std::string format;
        double seconds = 0.0;
        std::string failure;
    };
    struct Levels {
        bool running = false;
        double rate = 1.0;
        std::int32_t volume = 256;
    };
    struct End {
        bool reached = false;
        bool told = false;       ///< on standard error
        bool moreTracks = false; ///< than the one that plays, maybe longer ones
        bool gaveUp = false;     ///< in the middle of the file; no seek moves it any more
    };
    struct Rest {
        const Player* lead;
        double from;     ///< where it was
        double leadFrom; ///< when the lead was there
    };

    void Take(const mpv_event& event, TimePoint now);
    /// What libmpv says now is of this file, not of one before.
    [[nodiscard]] bool IsOfThisFile() const { return m_held == Held::Started && m_loadsUnderWay == 0; }
    void TakeProperty(Topic topic, const mpv_event_property& property, TimePoint now);
    void TakeReply(Topic topic, const mpv_event& event, TimePoint now);
    void TakeEnd(const mpv_event_end_file& end);
    /// Of its file.
    void LetGo();
    std::unique_ptr<Deck> Exchange(std::unique_ptr<Deck> deck);
    void TakeFile(const MediumPointer& medium, const Preparation& preparation);
    void LoadFile(bool pictures, double from);
    void LoadFrom(double seconds, double picture, TimePoint now);
    void TryOtherWay();
    void TakePixelFormat(bool known);
    void TakeInterlaced();
    /// What its pictures go through.
    [[nodiscard]] std::string Filters() const;
    /// libmpv is to hold nothing.
    void Empty();
    /// Where it is while it rests, also a little outside the movie.
    [[nodiscard]] double RestAim(TimePoint now) const;
    void TakeRestart();
    void SetSeekLead(std::string_view format);
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
    MediumPointer m_medium;
    Shelf::Item m_item;  ///< what libmpv loads in its name
    bool m_midi = false; ///< which is the sound of a MIDI file
    MovieHeader m_header;
    Demand m_demand = Demand::Asked;
    Length m_length;

    // The opening.
    int m_loadsUnderWay = 0; ///< commands that libmpv has not yet taken
    Held m_held = Held::Nothing;
    std::int64_t m_entry = 0; ///< libmpv's number of the file that it started
    bool m_withPictures = false;
    bool m_lastTry = false; ///< with pictures and without them
    Findings m_found;

    // What is wanted.
    Levels m_wanted;
    std::optional<double> m_nextSeek; ///< not yet told
    unsigned m_group = 0;             ///< players of one group start together

    // What libmpv has been told.
    Levels m_told;
    std::uint64_t m_hook = 0; ///< at which the loading waits
    std::string m_outputs;
    std::optional<Flight> m_flight;
    std::optional<double> m_standsAt; ///< it has not run since it was set there
    std::optional<double> m_picture;  ///< what it shows, if that is not what a seek to its place would show

    // What it said.
    PlayClock m_clock;
    std::string m_output; ///< where its sound goes or went last
    TimePoint m_lastWord; ///< of its position, or its start
    End m_end;

    std::optional<Rest> m_rest;
};

} // namespace kirolane::mpv
