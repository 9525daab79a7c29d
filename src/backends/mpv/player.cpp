#include "backends/mpv/player.h"

#include "backends/mpv/conductor.h"
#include "backends/mpv/thread_niceness.h"

#include <algorithm>
#include <cmath>

namespace kirolane::mpv {

namespace {
/// libmpv's range of speeds.
constexpr double kSlowest = 0.01;
constexpr double kFastest = 100.0;

/// A player with a sound device that runs so long without a new position: the device may hold it up.
constexpr std::chrono::seconds kWordless{1};

/// For pictures that are marked as interlaced, each in its time.
const std::string kDeinterlacing = "yadif=mode=send_frame:deint=interlaced";

/// libmpv's volume is cubic.
double CubicVolume(std::int32_t linear) {
    return 100.0 * std::cbrt(static_cast<double>(linear) / 256.0);
}
} // namespace

Player::Player(std::shared_ptr<Conductor> conductor, PlayerRole role)
    : m_conductor(std::move(conductor)), m_role(std::move(role)),
      m_pictures(m_role.role == Role::Preview ? kPreviewNiceness : 0,
                 [wait = m_conductor->Waiting()] { wait->Ring(); }) {
    m_conductor->Add(*this);
}

Player::~Player() {
    m_conductor->Remove(*this);
    if (m_deck == nullptr)
        return;
    m_deck->SetWakeUp({});
    m_pictures.Detach();
    m_conductor->Bury(std::move(m_deck));
}

void Player::Furnish(std::unique_ptr<Deck> deck) {
    m_deck = std::move(deck);
    m_outputs = m_conductor->Options().audioOutput;
    m_pictures.Attach(m_deck->Renderer());
    m_deck->SetWakeUp([conductor = m_conductor.get()] { conductor->Wake(); });
}

bool Player::Load(const std::string& nativePath) {
    return Load(LoadRequest{.path = nativePath});
}

bool Player::Load(const LoadRequest& request) {
    return m_conductor->Load(*this, request);
}

void Player::Release() {
    const std::lock_guard lock(m_conductor->Mutex());
    if (m_demand == Demand::Asked)
        m_demand = Demand::Released;
}

double Player::Duration() const {
    const std::lock_guard lock(m_conductor->Mutex());
    return m_length.seconds;
}

double Player::Position() const {
    return PositionAsOf(Clock::now());
}

double Player::PositionAsOf(Instant at) const {
    const std::lock_guard lock(m_conductor->Mutex());
    return m_phase == Phase::Open ? AimAt(at) : 0.0;
}

double Player::AimAt(TimePoint now) const {
    if (!Rests() && m_nextSeek)
        return *m_nextSeek;
    if (m_flight)
        return m_flight->target;
    if (AtEndAt(now))
        return m_length.seconds;
    return std::clamp(Rests() ? RestAim(now) : m_clock.Read(now), 0.0, LastBeforeEnd());
}

// Where the length is a guess, or the file's clock jumps, libmpv's word alone is the end. Whoever looks for
// it in whole seconds must not find it before.
double Player::LastBeforeEnd() const {
    const bool known = (m_length.exact && m_length.even) || m_length.seconds < 1.0;
    return known ? m_length.seconds : std::nextafter(std::floor(m_length.seconds), 0.0);
}

double Player::PictureAt(TimePoint now) const {
    if (m_wanted.running || AtEndAt(now))
        return AimAt(now);
    if (Rests())
        return m_rest->lead->PictureAt(now);
    if (!m_nextSeek && m_flight)
        return m_flight->picture;
    return m_nextSeek || !m_picture || !m_withPictures ? AimAt(now) : *m_picture;
}

wire::Motion Player::GetMotion() const {
    const std::lock_guard lock(m_conductor->Mutex());
    const TimePoint now = Clock::now();
    const auto number = [](TimePoint time) {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
    };
    wire::Motion motion;
    motion.asOf = number(now);
    if (m_phase != Phase::Open)
        return motion;
    motion.position = AimAt(now);
    motion.picture = PictureAt(now);
    motion.atEnd = AtEndAt(now) ? 1 : 0;
    const Player& mover = Rests() ? *static_cast<const Player*>(m_rest->lead) : *this;
    if (!mover.m_flight && !mover.m_nextSeek && motion.atEnd == 0 && mover.m_clock.Running()) {
        const double left = LastBeforeEnd() - motion.position;
        const auto passing = std::chrono::duration<double>(std::max(left, 0.0) / mover.m_told.rate);
        motion.rate = mover.m_told.rate;
        motion.until = number(
            std::min(mover.m_clock.StandsFrom(), now + std::chrono::duration_cast<Clock::duration>(passing)));
    }
    return motion;
}

bool Player::AtEnd() const {
    const std::lock_guard lock(m_conductor->Mutex());
    return AtEndAt(Clock::now());
}

bool Player::AtEndAt(TimePoint now) const {
    if (Rests())
        return m_phase == Phase::Open && m_rest->lead->AtEndAt(now);
    return m_phase == Phase::Open && !m_flight && !m_nextSeek && m_end.reached;
}

void Player::Reset() {
    m_demand = Demand::Asked;
    m_length = {};
    m_lastTry = false;
    m_found = {};
    m_wanted.running = false;
    m_end = {};
    m_rest.reset();
    Empty();
    m_pictures.Expect();
}

void Player::Empty() {
    m_held = Held::Nothing;
    m_nextSeek.reset();
    m_group = 0;
    m_flight.reset();
    m_standsAt.reset();
    m_picture.reset();
    m_end.reached = false;
    if (m_told.running)
        m_deck->SetPause(true);
    m_told.running = false;
    m_clock.Set(0.0);
}

void Player::Open(const MediumPointer& medium, const Preparation& preparation, const LoadRequest& request,
                  bool ahead) {
    Reset();
    m_phase = Phase::Opening;
    m_demand = ahead ? Demand::Ahead : Demand::Asked;
    TakeFile(medium, preparation);
    LoadFrom(request.from, request.picture, Clock::now());
    m_flight->limit = TimePoint::max();
}

void Player::TakeFile(const MediumPointer& medium, const Preparation& preparation) {
    m_file = medium->File();
    m_medium = medium;
    m_item = preparation.item;
    m_midi = preparation.midi;
    m_header = preparation.header;
    m_withPictures = m_role.role != Role::Sound;
}

void Player::OpenAtRest(const MediumPointer& medium, const Preparation& preparation, Player& lead,
                        double from) {
    Unload();
    m_phase = Phase::Opening;
    TakeFile(medium, preparation);
    m_rest = Rest{&lead, from, lead.AimAt(Clock::now())};
    lead.m_pictures.Lead(m_pictures);
}

void Player::LoadFrom(double seconds, double picture, TimePoint now) {
    TellLevels(now); // before anything is decoded ahead at others
    m_clock.Set(seconds);
    m_picture.reset();
    m_flight = Flight{seconds, picture, now + m_conductor->Options().seekLimit};
    m_found.decoded = false;
    LoadFile(m_withPictures, picture);
}

void Player::LoadFile(bool pictures, double from) {
    m_withPictures = pictures;
    m_held = Held::Awaited;
    ++m_loadsUnderWay;
    const bool seeks = from > 0.0 || m_header.leadIn;
    m_deck->Load(m_item.uri, pictures, Filters(), seeks ? std::optional(from) : std::nullopt);
}

std::string Player::Filters() const {
    if (!m_found.interlaced)
        return m_header.turn;
    return kDeinterlacing + (m_header.turn.empty() ? "" : "," + m_header.turn);
}

void Player::Opened(const std::string& format, const Length& length, TimePoint now) {
    m_phase = Phase::Open;
    m_found.format = format;
    m_length = length;
    if (m_flight)
        m_flight->limit = now + m_conductor->Options().seekLimit;
}

void Player::Unload() {
    if (m_phase != Phase::Empty)
        m_deck->Stop();
    Reset();
    LetGo();
}

void Player::LetGo() {
    m_medium.reset();
    m_item = {};
    m_phase = Phase::Empty;
}

std::unique_ptr<Deck> Player::Exchange(std::unique_ptr<Deck> deck) {
    m_deck->SetWakeUp({});
    m_pictures.Detach();
    std::unique_ptr<Deck> old = std::move(m_deck);
    m_told = {};
    m_loadsUnderWay = 0;
    m_held = Held::Nothing;
    m_output.clear();
    Furnish(std::move(deck));
    return old;
}

std::unique_ptr<Deck> Player::Replace(std::unique_ptr<Deck> deck) {
    std::unique_ptr<Deck> old = Exchange(std::move(deck));
    Reset();
    LetGo();
    m_clock.SetRate(m_told.rate, Clock::now());
    return old;
}

std::unique_ptr<Deck> Player::GoOnIn(std::unique_ptr<Deck> deck, TimePoint now) {
    const double place = AimAt(now);
    const double picture = PictureAt(now);
    std::unique_ptr<Deck> old = Exchange(std::move(deck));
    m_nextSeek.reset();
    SetOutputs(std::string(kNoOutput));
    LoadFrom(place, picture, now);
    return old;
}

void Player::Want(const PlayerOrder& order) {
    m_wanted.rate = std::clamp(order.rate, kSlowest, kFastest);
    m_wanted.volume = order.volume;
    if (m_phase != Phase::Open)
        return;
    m_wanted.running = order.running;
    if (!m_wanted.running)
        m_group = 0;
    if (!order.seekTo || m_end.gaveUp)
        return;
    // Where it stands, or goes already, without running: equal orders are one seek.
    const std::optional<double> place = m_nextSeek ? m_nextSeek
                                        : m_flight ? std::optional(m_flight->target)
                                                   : m_standsAt;
    if (m_told.running || m_end.reached || place != order.seekTo)
        m_nextSeek = order.seekTo;
}

bool Player::StartsBy(const PlayerOrder& order) const {
    return m_phase == Phase::Open && !Rests() && order.running &&
           (!m_told.running || order.seekTo || m_group != 0);
}

void Player::Start() {
    m_deck->SetPause(false);
    m_told.running = true;
    m_standsAt.reset();
    m_group = 0;
    m_lastWord = Clock::now();
}

void Player::Halt(TimePoint now) {
    if (!m_told.running)
        return;
    m_deck->SetPause(true);
    m_told.running = false;
    m_deck->Ask("time-pos", MPV_FORMAT_DOUBLE, Topic::PausedAt);
    m_clock.Halt(now);
}

void Player::TellLevels(TimePoint now) {
    if (m_told.rate != m_wanted.rate) {
        m_deck->SetNumber("speed", m_wanted.rate);
        m_clock.SetRate(m_wanted.rate, now);
        m_told.rate = m_wanted.rate;
    }
    if (m_told.volume != m_wanted.volume) {
        m_deck->SetNumber("volume", CubicVolume(m_wanted.volume));
        m_told.volume = m_wanted.volume;
    }
}

void Player::Advance(bool haltToSeek, TimePoint now) {
    if (m_phase == Phase::Empty || Rests())
        return;
    TellLevels(now);
    if (m_phase != Phase::Open)
        return;
    if (!m_wanted.running)
        Halt(now);
    if (!m_nextSeek || (m_flight && !m_flight->late))
        return; // one at a time: its end is then told from the next one's
    if (haltToSeek)
        Halt(now);
    m_deck->Seek(*m_nextSeek);
    m_flight = Flight{*m_nextSeek, *m_nextSeek, now + m_conductor->Options().seekLimit};
    m_clock.Set(*m_nextSeek);
    m_nextSeek.reset();
    m_standsAt.reset();
    m_picture.reset();
}

std::optional<TimePoint> Player::Deadline() const {
    if (m_phase != Phase::Open || Rests())
        return std::nullopt;
    if (m_flight)
        return m_flight->late ? std::nullopt : std::optional(m_flight->limit);
    return m_end.reached ? std::nullopt : m_clock.Doubtful();
}

void Player::TakeTime(TimePoint now) {
    const auto deadline = Deadline();
    if (!deadline || *deadline > now)
        return;
    if (m_flight) {
        m_flight->late = true;
        return;
    }
    m_clock.Ask(now);
    m_deck->Ask("audio-pts", MPV_FORMAT_DOUBLE, Topic::SoundPos);
}

void Player::RestAt(Player& lead, TimePoint now) {
    const Rest rest{&lead, AimAt(now), lead.AimAt(now)};
    Empty();
    m_deck->Stop();
    m_rest = rest;
    lead.m_pictures.Lead(m_pictures);
}

double Player::RestAim(TimePoint now) const {
    return m_rest->from + (m_rest->lead->AimAt(now) - m_rest->leadFrom);
}

void Player::Hold(TimePoint now) {
    if (!Rests())
        return;
    m_rest->from = RestAim(now);
    m_rest->leadFrom = m_rest->lead->AimAt(now);
}

Player::Hearing Player::GetHearing() const {
    if (m_role.role == Role::Preview || m_phase != Phase::Open || !m_found.sound || m_output.empty())
        return Hearing::None;
    return m_output == kNoOutput ? Hearing::Silent : Hearing::Heard;
}

void Player::SetOutputs(const std::string& outputs) {
    if (m_outputs == outputs)
        return;
    m_deck->SetOutputs(outputs);
    m_outputs = outputs;
}

void Player::TakeSoundUp(const std::string& outputs) {
    if (m_end.reached)
        return;
    m_deck->TakeSoundUp(outputs);
    m_outputs = outputs;
}

std::optional<TimePoint> Player::DoubtedFrom() const {
    if (GetHearing() != Hearing::Heard || !Plays())
        return std::nullopt;
    return m_lastWord + kWordless;
}

void Player::Settle(TimePoint now) {
    if (!Rests())
        return;
    m_rest->from = m_nextSeek.value_or(m_rest->from);
    m_rest->leadFrom = m_rest->lead->AimAt(now);
    m_nextSeek.reset();
}

void Player::Wake(double picture, TimePoint now) {
    const double place = AimAt(now);
    m_rest.reset();
    LoadFrom(place, picture, now);
}

void Player::Land(TimePoint now) {
    const Flight landed = *m_flight;
    m_flight.reset();
    m_clock.Set(landed.target);
    m_lastWord = now;
    if (m_told.running) {
        m_clock.Start(now);
    } else if (landed.picture == landed.target) {
        m_standsAt = landed.target;
    } else {
        m_picture = landed.picture;
    }
}

} // namespace kirolane::mpv
