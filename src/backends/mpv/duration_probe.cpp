#include "backends/mpv/duration_probe.h"

#include "backends/mpv/packet_scan.h"
#include "wire/messages.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace kirolane::mpv {

namespace {

/// Containers without a duration of their own: libavformat guesses from the bit rate or from the last time
/// stamps. Of these MP3 has one where a certain header is there.
constexpr std::string_view kGuessed[] = {"mpegvideo", "m4v", "mp3", "aac", "mpeg", "mpegts"};

/// For what plays and yet has no length that could be found: one picture.
constexpr double kLeast = 0.04;

/// An extrapolation gives way to a guess from time stamps that lies this near, as a share of it.
constexpr double kAgrees = 0.3;

bool IsLength(double seconds) {
    return seconds > 0.0 && seconds <= wire::kLongestFile; // nor is it what is no number
}

} // namespace

bool KnowsLength(const std::string& format, double told) {
    const bool guessed = std::find(std::begin(kGuessed), std::end(kGuessed), format) != std::end(kGuessed);
    return IsLength(told) && !guessed;
}

Length MeasureLength(const MediumPointer& medium, double told, std::chrono::milliseconds limit) {
    const PacketScan scan = ScanPackets(medium, limit);
    if (scan.headerSeconds > 0.0)
        return {scan.headerSeconds, true};
    if (scan.complete && IsLength(scan.seconds))
        return {scan.seconds, true, !scan.jumps};
    const auto read = static_cast<double>(scan.bytesRead - scan.dataFrom);
    if (IsLength(scan.seconds) && read > 0.0) {
        const double whole =
            scan.seconds * std::max(static_cast<double>(medium->File().size - scan.dataFrom) / read, 1.0);
        if (!scan.hasTimeStamps || !IsLength(told))
            return GuessLength(whole);
        // A file may begin with its costly part: the longer of the two cuts nothing off.
        return GuessLength(std::abs(told - whole) < whole * kAgrees ? told : std::max(told, whole));
    }
    return GuessLength(told);
}

Length GuessLength(double told) {
    return {IsLength(told) ? std::max(told, kLeast) : kLeast, false};
}

} // namespace kirolane::mpv
