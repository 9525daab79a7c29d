#include "benchmarks.h"
#include "show.h"

#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"

#include <cmath>
#include <optional>

namespace kirolane::bench {

namespace {

constexpr int kClip = 7;
constexpr double kRate = 30.0; ///< frames a second of the clip
constexpr int kSeconds = 600;
constexpr int kLeast = 30; ///< shots of a second that show frames in both windows

/// The twins' distance as the two windows show it in the same moments, in milliseconds; nothing if too few
/// shots tell.
std::optional<double> Shown(const std::vector<Shot>& shots) {
    int count = 0;
    int frames = 0;
    for (const Shot& shot : shots) {
        if (!shot.stage.Shows(kClip) || !shot.preview.Shows(kClip))
            continue;
        ++count;
        frames += shot.stage.frame - shot.preview.frame;
    }
    if (count < kLeast)
        return std::nullopt;
    return 1000.0 / kRate * frames / count;
}

} // namespace

std::vector<Row> MeasureLongDrift(const Inputs& inputs) {
    Show show(inputs.clips + "/long", Show::Look::StageAndPreview);
    const App& app = show.Program();
    app.OpenRow(0);
    show.UntilSeen(kClip, 30);
    Samples difference;
    Samples readOut;
    Samples pictures;
    int blind = 0;
    for (int second = 0; second < kSeconds; ++second) {
        show.Eye().Take();
        app.For(1000);
        const double read = 1000.0 * (app.Monitor().QTM()->Position() - app.Console().QTM()->Position());
        const auto shown = Shown(show.Eye().Take());
        readOut.Add(read);
        if (shown) {
            pictures.Add(*shown);
            difference.Add(std::abs(read - *shown));
        } else {
            ++blind;
        }
    }
    if (!app.Console().Play_Flag || app.Console().QTM()->Position() < kSeconds)
        throw RuntimeException("the clip did not play through");
    Row row = MedianAndWorstRow("read-out and pictures, 10 minutes", difference, difference, "ms",
                                1000.0 / kRate, 1000.0 / kRate);
    row.holds = row.holds && blind == 0;
    row.reference = std::to_string(blind) + " seconds of " + std::to_string(kSeconds) + " without pictures";
    return {row, ReportRow("read-out, 10 minutes", readOut, "ms"),
            ReportRow("pictures, 10 minutes", pictures, "ms")};
}

} // namespace kirolane::bench
