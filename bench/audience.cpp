#include "audience.h"

#include <numeric>

namespace kirolane::bench {

void Audience::See(const std::vector<Shot>& shots) {
    for (const Shot& shot : shots) {
        const Sight& sight = shot.stage;
        if (m_shots++ == 0)
            m_first = shot.milliseconds;
        m_last = shot.milliseconds;
        if (sight.kind != Sight::Kind::Frame) {
            ++m_bad[static_cast<std::size_t>(sight.kind)];
            continue;
        }
        const bool repeat = m_repeatFrom >= 0;
        const int next = repeat ? m_clip : m_clip % m_clips + 1;
        if (sight.clip == m_clip && sight.frame >= m_frame) {
            m_frame = sight.frame;
        } else if (sight.clip == next && (!repeat || m_frame >= m_repeatFrom)) {
            ++m_changes;
            m_clip = next;
            m_frame = sight.frame;
            m_firstFrames.Add(sight.frame);
        } else {
            ++m_misplaced;
        }
    }
}

int Audience::Bad() const {
    return std::accumulate(m_bad.begin(), m_bad.end(), m_misplaced);
}

double Audience::ShotsPerSecond() const {
    return m_last > m_first ? 1000.0 * (m_shots - 1) / (m_last - m_first) : 0.0;
}

std::string Audience::Complaints() const {
    std::string text;
    const auto add = [&](const char* what, int count) {
        if (count > 0)
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + what;
    };
    for (std::size_t kind = 0; kind < m_bad.size(); ++kind)
        add(NameOf(static_cast<Sight::Kind>(kind)), m_bad[kind]);
    add("misplaced", m_misplaced);
    return text;
}

} // namespace kirolane::bench
