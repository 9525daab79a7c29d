#pragma once

#include "contract/backend/mediaengine.h"

#include <QImage>

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace kirolane::tests {

/// One player whose pictures the test makes by hand, each of one colour. Fails the test if somebody still
/// listens to its pictures when it goes.
class PictureEngine : public PlayerEngine, private FrameSource {
public:
    PictureEngine() = default;
    ~PictureEngine() override { EXPECT_FALSE(m_listener) << "the widget outlives the engine"; }
    PictureEngine(const PictureEngine&) = delete;
    PictureEngine& operator=(const PictureEngine&) = delete;

    /// What the next Load gives: a file with pictures, or sound alone.
    void SetNextHasPicture(bool has) { m_nextHasPicture = has; }
    void MakePicture(QColor color) {
        m_picture = QImage(m_size, QImage::Format_RGB32);
        m_picture.fill(color.rgb());
        // The fourth byte is undefined by contract: here it is one that no viewer may trust.
        for (uchar* byte = m_picture.bits() + 3; byte < m_picture.bits() + m_picture.sizeInBytes(); byte += 4)
            *byte = 0;
        m_hasFrame = true;
        if (m_listener)
            m_listener();
    }
    [[nodiscard]] QSize AskedSize() const { return m_size; }
    [[nodiscard]] bool Watched() const { return m_listener != nullptr; }

    bool Load(const std::string& /*nativePath*/) override {
        m_hasPicture = m_nextHasPicture;
        m_hasFrame = false; // the old picture stays to be visited
        return true;
    }
    [[nodiscard]] double Duration() const override { return 10.0; }
    [[nodiscard]] double Position() const override { return 0.0; }
    [[nodiscard]] bool AtEnd() const override { return false; }
    [[nodiscard]] FrameSource* Frames() override { return this; }

private:
    void SetSize(std::int32_t width, std::int32_t height) override { m_size = {width, height}; }
    void SetListener(std::function<void()> listener) override { m_listener = std::move(listener); }
    [[nodiscard]] bool HasFrame() const override { return m_hasFrame; }
    [[nodiscard]] bool HasPicture() const override { return m_hasPicture; }
    void Visit(const std::function<void(const FrameView&)>& visit) const override {
        if (!m_picture.isNull())
            visit({m_picture.constBits(), m_picture.width(), m_picture.height(),
                   static_cast<std::int32_t>(m_picture.bytesPerLine())});
    }

    bool m_nextHasPicture = true;
    bool m_hasPicture = false;
    bool m_hasFrame = false;
    QSize m_size{0, 0};
    QImage m_picture;
    std::function<void()> m_listener;
};

/// Players by path, as in "Mainform.QTM".
class PictureMedia : public MediaEngine {
public:
    [[nodiscard]] PictureEngine& Player(const std::string& path) { return *m_players.at(path); }

    std::unique_ptr<PlayerEngine> MakePlayer(std::string_view path) override {
        auto player = std::make_unique<PictureEngine>();
        m_players[std::string(path)] = player.get();
        return player;
    }
    void Apply(std::span<const EngineOrder> /*orders*/) override {}

private:
    std::map<std::string, PictureEngine*> m_players;
};

} // namespace kirolane::tests
