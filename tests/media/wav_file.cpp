#include "wav_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace kirolane::tests {

namespace {

template <class T> T At(const std::string& bytes, std::size_t place) {
    T value{};
    std::memcpy(&value, bytes.data() + place, sizeof value);
    return value;
}

double Sample(const std::string& bytes, std::size_t place, std::size_t size, bool floating) {
    if (floating)
        return size == 4 ? At<float>(bytes, place) : At<double>(bytes, place);
    if (size == 2)
        return At<std::int16_t>(bytes, place) / 32768.0;
    return At<std::int32_t>(bytes, place) / 2147483648.0;
}

} // namespace

WavFile WavFile::Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    WavFile wav;
    const std::size_t format = bytes.find("fmt ");
    const std::size_t data = bytes.find("data");
    if (bytes.size() < 44 || format == std::string::npos || data == std::string::npos) {
        ADD_FAILURE() << path << " is no WAV file";
        return wav;
    }
    auto kind = At<std::uint16_t>(bytes, format + 8);
    if (kind == 0xFFFE) // the kind stands further behind
        kind = At<std::uint16_t>(bytes, format + 32);
    wav.m_channels = At<std::uint16_t>(bytes, format + 10);
    wav.m_rate = At<std::uint32_t>(bytes, format + 12);
    const std::size_t size = At<std::uint16_t>(bytes, format + 22) / 8U;
    EXPECT_TRUE(kind == 1 || kind == 3) << kind;
    for (std::size_t place = data + 8; place + size <= bytes.size(); place += size)
        wav.m_samples.push_back(Sample(bytes, place, size, kind == 3));
    return wav;
}

double WavFile::Seconds() const {
    return m_rate > 0.0 ? static_cast<double>(Frames()) / m_rate : 0.0;
}

double WavFile::PeakFrom(std::size_t frame) const {
    double peak = 0.0;
    for (std::size_t i = frame * m_channels; i < m_samples.size(); ++i)
        peak = std::max(peak, std::abs(m_samples[i]));
    return peak;
}

double WavFile::PeakOfLast(double seconds) const {
    const auto frames = static_cast<std::size_t>(seconds * m_rate);
    return PeakFrom(Frames() > frames ? Frames() - frames : 0);
}

double WavFile::Amplitude() const {
    const std::size_t first = Frames() / 4;
    const std::size_t last = Frames() * 3 / 4;
    double power = 0.0;
    for (std::size_t i = first; i < last; ++i)
        power += m_samples[i * m_channels] * m_samples[i * m_channels];
    return last > first ? std::sqrt(2.0 * power / static_cast<double>(last - first)) : 0.0;
}

double WavFile::Frequency() const {
    const std::size_t first = Frames() / 4;
    const std::size_t last = Frames() * 3 / 4;
    int crossings = 0;
    for (std::size_t i = first + 1; i < last; ++i)
        crossings += m_samples[(i - 1) * m_channels] < 0.0 && m_samples[i * m_channels] >= 0.0 ? 1 : 0;
    return crossings * m_rate / static_cast<double>(last - first);
}

} // namespace kirolane::tests
