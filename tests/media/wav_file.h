#pragma once

#include <string>
#include <vector>

namespace kirolane::tests {

/// A WAV file of whole or floating samples, as libmpv writes it.
class WavFile {
public:
    /// Empty, with a failure of the test, for what is not one.
    static WavFile Read(const std::string& path);

    [[nodiscard]] double Seconds() const;
    /// The greatest amplitude of any channel, 1 for full scale.
    [[nodiscard]] double Peak() const { return PeakFrom(0); }
    [[nodiscard]] double PeakOfLast(double seconds) const;
    /// Of a steady sine in the first channel: from the power of the middle half.
    [[nodiscard]] double Amplitude() const;
    /// Of a steady tone in the first channel, in hertz: from its crossings of zero in the middle half.
    [[nodiscard]] double Frequency() const;

private:
    [[nodiscard]] double PeakFrom(std::size_t frame) const;
    [[nodiscard]] std::size_t Frames() const { return m_channels == 0 ? 0 : m_samples.size() / m_channels; }

    std::size_t m_channels = 0;
    double m_rate = 0.0;
    std::vector<double> m_samples; ///< channel by channel within a frame
};

} // namespace kirolane::tests
