#include "benchmarks.h"
#include "ear.h"
#include "folders.h"
#include "show.h"

#include "contract/exceptions.h"
#include "logic/shell/mainform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <optional>

#include <poll.h>

namespace kirolane::bench {

namespace {

constexpr int kTimes = 5;
constexpr int kClip = 10;         ///< and the next
constexpr int kBeat = 15;         ///< frames from one beep to the next
constexpr int kWatched = 2700;    ///< milliseconds
constexpr double kNear = 200.0;   ///< milliseconds between a picture and its beep, at most
constexpr double kEarly = 5.0;    ///< milliseconds by which sound may be ahead of its picture
constexpr double kLate = 15.0;    ///< and behind
constexpr double kControl = 40.0; ///< by which the beeps of one clip are behind
constexpr double kNearControl = 15.0;

/// A show whose sound is heard.
class Theatre {
public:
    explicit Theatre(const std::string& clips)
        : m_server(m_folder.Path()),
          m_ear((::setenv("PULSE_SERVER", m_server.Address().c_str(), 1), m_server.Address())),
          m_show(clips, Show::Look::Stage, "pulse,null") {}

    [[nodiscard]] const App& Program() const { return m_show.Program(); }
    [[nodiscard]] Mainform& Console() const { return Program().Console(); }
    void OpenRow(int row) { Program().OpenRow(row); }
    void UntilSeen(int clip, int frame) const { m_show.UntilSeen(clip, frame); }
    /// The sound server goes, and another comes.
    void LoseSound() {
        m_server.Stop();
        Program().For(1000);
        m_server.Start();
        m_ear.emplace(m_server.Address());
        Program().Until([this] { return !m_ear->Take().empty(); });
    }

    /// Has that done and watches and listens for a while: by how many milliseconds each beep was ahead of its
    /// picture, behind it where negative.
    void Measure(const std::function<void()>& act, Samples& ahead) {
        m_show.Eye().Take();
        m_ear->Take();
        Program().Deliver(act);
        Program().For(kWatched);
        const double clock = SteadyMilliseconds() - m_show.Eye().Now();
        const std::vector<double> beeps = m_ear->Take();
        int last = -1;
        for (const Shot& shot : m_show.Eye().Take()) {
            const Sight& sight = shot.stage;
            const bool first = sight.kind == Sight::Kind::Frame && sight.frame != last && last >= 0;
            last = sight.kind == Sight::Kind::Frame ? sight.frame : -1;
            if (!first || sight.frame % kBeat != 0)
                continue;
            const double seen = shot.drawn + clock;
            const auto nearest = std::min_element(beeps.begin(), beeps.end(), [seen](double a, double b) {
                return std::abs(a - seen) < std::abs(b - seen);
            });
            if (nearest != beeps.end() && std::abs(*nearest - seen) < kNear)
                ahead.Add(seen - *nearest);
        }
    }

private:
    MemoryFolder m_folder;
    SoundServer m_server;
    std::optional<Ear> m_ear;
    Show m_show;
};

Row RowOf(const char* name, const Samples& ahead, const Samples& control) {
    Row row = ReportRow(name, ahead, "ms");
    row.hasGoal = true;
    row.goal = "-15 to +5";
    row.reference = "beeps 40 ms late: " + control.Text("ms");
    row.holds = ahead.Count() >= kTimes && ahead.Median() <= kEarly && ahead.Median() >= -kLate;
    return row;
}

} // namespace

std::vector<Row> MeasureLips(const Inputs& inputs) {
    Theatre theatre(inputs.clips + "/lips");
    Mainform& console = theatre.Console();
    const auto playPause = [&] { console.QTM_PlayStatus_Action(); };
    const auto open = [&](int row) {
        return [&console, row] {
            console.StrGrid()->SetListIndex(row);
            console.StrGridDblClick_Action();
        };
    };
    Samples start;
    Samples resume;
    Samples seek;
    Samples row;
    Samples device;
    for (int i = 0; i < kTimes; ++i) {
        theatre.Program().Close();
        theatre.Program().For(300);
        theatre.Measure(open(0), start);
        theatre.Program().Deliver(playPause);
        theatre.Program().For(100 + 70 * i);
        theatre.Measure(playPause, resume);
        theatre.Measure(
            [&] {
                console.QTM_PosBar_MouseDown(0, 0);
                console.QTM_PosBar()->SetValue(8 + i);
            },
            seek);
        theatre.Measure(open(1), row);
    }
    for (int i = 0; i < 3; ++i) {
        theatre.OpenRow(0);
        theatre.UntilSeen(kClip, kBeat);
        theatre.LoseSound();
        theatre.Measure([] {}, device);
    }
    Samples held;
    theatre.OpenRow(0);
    theatre.UntilSeen(kClip, kBeat);
    theatre.Measure([] { ::poll(nullptr, 0, kWatched); }, held);
    Samples control;
    theatre.Program().Close();
    theatre.Measure(open(2), control);
    if (std::abs(control.Median() + kControl) > kNearControl)
        throw RuntimeException("a clip whose beeps come late goes unseen");
    return {RowOf("lips after a start", start, control),
            RowOf("lips after a resume", resume, control),
            RowOf("lips after a seek", seek, control),
            RowOf("lips after a change of row", row, control),
            RowOf("lips after the sound's return", device, control),
            RowOf("lips, the event loop held", held, control)};
}

} // namespace kirolane::bench
