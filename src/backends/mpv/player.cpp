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
    return m_conductor->Load(*this, nativePath);
}

void Player::Release() {
    const std::lock_guard lock(m_conductor->Mutex());
    m_released = true;
}

double Player::Duration() const {
    const std::lock_guard lock(m_conductor->Mutex());
    return m_duration;
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
    if (Rests() && !AtEndAt(now))
        return std::clamp(RestAim(now), 0.0, m_duration);
    return AtEndAt(now) ? m_duration : std::clamp(m_clock.Read(now), 0.0, m_duration);
}

bool Player::AtEnd() const {
    const std::lock_guard lock(m_conductor->Mutex());
    return AtEndAt(Clock::now());
}

bool Player::AtEndAt(TimePoint now) const {
    if (Rests())
        return m_phase == Phase::Open && m_lead->AtEndAt(now);
    return m_phase == Phase::Open && !m_flight && !m_nextSeek && m_eof;
}

void Player::Reset() {
    m_released = false;
    m_ahead = false;
    m_duration = 0.0;
    m_exact = false;
    m_described = false;
    m_decoded = false;
    m_lastTry = false;
    m_pictureless = false;
    m_interlaced = false;
    m_hasSound = false;
    m_format.clear();
    m_containerDuration = 0.0;
    m_failure.clear();
    m_running = false;
    m_endTold = false;
    m_moreTracks = false;
    m_gaveUp = false;
    m_lead = nullptr;
    Empty();
    m_pictures.Expect();
}

void Player::Empty() {
    m_loading = false;
    m_started = false;
    m_nextSeek.reset();
    m_group = 0;
    m_flight.reset();
    m_standsAt.reset();
    m_eof = false;
    if (m_toldRunning)
        m_deck->SetPause(true);
    m_toldRunning = false;
    m_clock.Set(0.0);
}

void Player::Open(const MediaFile& file, const Preparation& preparation, bool ahead) {
    Reset();
    m_phase = Phase::Opening;
    m_file = file;
    m_ahead = ahead;
    TakePreparation(preparation);
    LoadFrom(0.0, Clock::now());
    m_flight->limit = TimePoint::max();
}

void Player::TakePreparation(const Preparation& preparation) {
    m_midi = preparation.midi.sound;
    m_uri = m_midi == nullptr ? m_file.path : preparation.midi.uri;
    m_header = preparation.header;
    m_askedForPictures = m_role.role != Role::Sound;
}

void Player::OpenAtRest(const MediaFile& file, const Preparation& preparation, Player& lead) {
    Unload();
    m_phase = Phase::Opening;
    m_file = file;
    TakePreparation(preparation);
    m_restsFrom = 0.0;
    m_leadFrom = 0.0;
    m_lead = &lead;
    lead.m_pictures.Lead(m_pictures);
}

void Player::LoadFrom(double seconds, TimePoint now) {
    TellLevels(now); // before anything is decoded ahead at others
    SetSeekLead();
    m_clock.Set(seconds);
    m_flight = Flight{seconds, now + m_conductor->Options().seekLimit};
    m_decoded = false;
    LoadFile(m_askedForPictures, seconds);
}

void Player::LoadFile(bool pictures, double from) {
    m_askedForPictures = pictures;
    m_loading = true;
    m_started = false;
    ++m_loadsUnderWay;
    const bool seeks = from > 0.0 || m_header.leadIn;
    m_deck->Load(m_uri, pictures, Filters(), seeks ? std::optional(from) : std::nullopt);
}

std::string Player::Filters() const {
    if (!m_interlaced)
        return m_header.turn;
    return kDeinterlacing + (m_header.turn.empty() ? "" : "," + m_header.turn);
}

void Player::Opened(const std::string& format, double duration, bool exact, TimePoint now) {
    m_phase = Phase::Open;
    m_format = format;
    m_duration = duration;
    m_exact = exact;
    if (m_flight)
        m_flight->limit = now + m_conductor->Options().seekLimit;
}

void Player::Unload() {
    if (m_phase != Phase::Empty)
        m_deck->Stop();
    Reset();
    m_midi.reset();
    m_phase = Phase::Empty;
}

std::unique_ptr<Deck> Player::Exchange(std::unique_ptr<Deck> deck) {
    m_deck->SetWakeUp({});
    m_pictures.Detach();
    std::unique_ptr<Deck> old = std::move(m_deck);
    m_toldRunning = false;
    m_toldRate = 1.0;
    m_toldVolume = 256;
    m_toldSeekLead = 0.0;
    m_loadsUnderWay = 0;
    m_started = false;
    m_output.clear();
    Furnish(std::move(deck));
    return old;
}

std::unique_ptr<Deck> Player::Replace(std::unique_ptr<Deck> deck) {
    std::unique_ptr<Deck> old = Exchange(std::move(deck));
    Reset();
    m_phase = Phase::Empty;
    return old;
}

std::unique_ptr<Deck> Player::GoOnIn(std::unique_ptr<Deck> deck, TimePoint now) {
    const double place = AimAt(now);
    std::unique_ptr<Deck> old = Exchange(std::move(deck));
    m_nextSeek.reset();
    SetOutputs(std::string(kNoOutput));
    LoadFrom(place, now);
    return old;
}

void Player::Want(const PlayerOrder& order) {
    m_rate = std::clamp(order.rate, kSlowest, kFastest);
    m_volume = order.volume;
    if (m_phase != Phase::Open)
        return;
    m_running = order.running;
    if (!m_running)
        m_group = 0;
    if (!order.seekTo || m_gaveUp)
        return;
    // Where it stands, or goes already, without running: equal orders are one seek.
    const std::optional<double> place = m_nextSeek ? m_nextSeek
                                        : m_flight ? std::optional(m_flight->target)
                                                   : m_standsAt;
    if (m_toldRunning || m_eof || place != order.seekTo)
        m_nextSeek = order.seekTo;
}

bool Player::StartsBy(const PlayerOrder& order) const {
    return m_phase == Phase::Open && !Rests() && order.running &&
           (!m_toldRunning || order.seekTo || m_group != 0);
}

void Player::Start() {
    m_deck->SetPause(false);
    m_toldRunning = true;
    m_standsAt.reset();
    m_group = 0;
    m_lastWord = Clock::now();
}

void Player::Halt(TimePoint now) {
    if (!m_toldRunning)
        return;
    m_deck->SetPause(true);
    m_toldRunning = false;
    m_clock.Halt(now);
}

void Player::TellLevels(TimePoint now) {
    if (m_toldRate != m_rate) {
        m_deck->SetNumber("speed", m_rate);
        m_clock.SetRate(m_rate, now);
        m_toldRate = m_rate;
    }
    if (m_toldVolume != m_volume) {
        m_deck->SetNumber("volume", CubicVolume(m_volume));
        m_toldVolume = m_volume;
    }
}

void Player::Advance(bool haltToSeek, TimePoint now) {
    if (m_phase == Phase::Empty || Rests())
        return;
    TellLevels(now);
    if (m_phase != Phase::Open)
        return;
    if (!m_running)
        Halt(now);
    if (!m_nextSeek || (m_flight && !m_flight->late))
        return; // one at a time: its end is then told from the next one's
    if (haltToSeek)
        Halt(now);
    m_deck->Seek(*m_nextSeek);
    m_flight = Flight{*m_nextSeek, now + m_conductor->Options().seekLimit};
    m_clock.Set(*m_nextSeek);
    m_nextSeek.reset();
    m_standsAt.reset();
}

std::optional<TimePoint> Player::Deadline() const {
    if (m_phase != Phase::Open || Rests())
        return std::nullopt;
    if (m_flight)
        return m_flight->late ? std::nullopt : std::optional(m_flight->limit);
    return m_eof ? std::nullopt : m_clock.Doubtful();
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
    m_restsFrom = AimAt(now);
    m_leadFrom = lead.AimAt(now);
    Empty();
    m_deck->Stop();
    m_lead = &lead;
    lead.m_pictures.Lead(m_pictures);
}

double Player::RestAim(TimePoint now) const {
    return m_restsFrom + (m_lead->AimAt(now) - m_leadFrom);
}

void Player::Hold(TimePoint now) {
    if (!Rests())
        return;
    m_restsFrom = RestAim(now);
    m_leadFrom = m_lead->AimAt(now);
}

Player::Hearing Player::GetHearing() const {
    if (m_role.role == Role::Preview || m_phase != Phase::Open || !m_hasSound || m_output.empty())
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
    if (m_eof)
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
    m_restsFrom = m_nextSeek.value_or(m_restsFrom);
    m_leadFrom = m_lead->AimAt(now);
    m_nextSeek.reset();
}

void Player::Wake(TimePoint now) {
    const double place = AimAt(now);
    m_lead = nullptr;
    LoadFrom(place, now);
}

void Player::Land(TimePoint now) {
    const double target = m_flight->target;
    m_flight.reset();
    m_clock.Set(target);
    m_lastWord = now;
    if (m_toldRunning)
        m_clock.Start(now);
    else
        m_standsAt = target;
}

} // namespace kirolane::mpv
