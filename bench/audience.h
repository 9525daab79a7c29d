#pragma once

#include "camera.h"
#include "report.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kirolane::bench {

/// Judges what the audience has seen against what it should have: the frames of one clip in their order, then
/// those of the next, and nothing else.
class Audience {
public:
    /// The show begins with that clip, and each is followed by the next of 1 to `clips`.
    Audience(int clip, int clips) : m_clip(clip), m_clips(clips) {}

    /// The clip now shown is to be repeated; it starts anew only from that frame on.
    void ExpectRepeats(int lastFrame) { m_repeatFrom = lastFrame; }
    void See(const std::vector<Shot>& shots);

    [[nodiscard]] int Changes() const {
        return m_changes;
    } ///< to the next clip, or from the end to the start
    [[nodiscard]] int Clip() const { return m_clip; }
    [[nodiscard]] int Frame() const { return m_frame; }
    [[nodiscard]] int Shots() const { return m_shots; }
    [[nodiscard]] int Bad() const;
    [[nodiscard]] int Bad(Sight::Kind kind) const { return m_bad[static_cast<std::size_t>(kind)]; }
    /// Frames that had been shown before, or of a clip whose turn it was not.
    [[nodiscard]] int Misplaced() const { return m_misplaced; }
    [[nodiscard]] double ShotsPerSecond() const;
    /// Of each clip that came on, the first frame that was seen.
    [[nodiscard]] const Samples& FirstFrames() const { return m_firstFrames; }
    /// "" or what was bad.
    [[nodiscard]] std::string Complaints() const;

private:
    int m_clip;
    int m_clips;
    int m_frame = 0;
    int m_repeatFrom = -1;
    int m_changes = 0;
    int m_shots = 0;
    int m_misplaced = 0;
    std::array<int, 5> m_bad{}; ///< by kind
    double m_first = 0;         ///< milliseconds
    double m_last = 0;
    Samples m_firstFrames;
};

} // namespace kirolane::bench
