#include "picture_media.h"

#include <gtest/gtest.h>

namespace kirolane::tests {

PictureEngine::~PictureEngine() {
    EXPECT_FALSE(m_listener) << "the widget outlives the engine and would be called";
}

bool PictureEngine::Load(const std::string& /*nativePath*/) {
    m_hasPicture = m_nextHasPicture;
    m_hasFrame = false; // the old picture stays to be visited
    return true;
}

void PictureEngine::SetSize(std::int32_t width, std::int32_t height) {
    m_width = width;
    m_height = height;
}

void PictureEngine::MakePicture(QColor color) {
    // The fourth byte is undefined by contract: here it is one that no viewer may trust.
    const std::uint32_t pixel = color.rgb() & 0x00FFFFFFU;
    m_pixels.assign(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), pixel);
    m_frame.pixels = reinterpret_cast<const std::uint8_t*>(m_pixels.data());
    m_frame.width = m_width;
    m_frame.height = m_height;
    m_frame.stride = m_width * 4;
    m_hasFrame = true;
    if (m_listener)
        m_listener();
}

void PictureEngine::Visit(const std::function<void(const FrameView&)>& visit) const {
    if (m_frame.pixels != nullptr)
        visit(m_frame);
}

std::unique_ptr<PlayerEngine> PictureMedia::MakePlayer(std::string_view path) {
    auto player = std::make_unique<PictureEngine>();
    m_players[std::string(path)] = player.get();
    return player;
}

} // namespace kirolane::tests
