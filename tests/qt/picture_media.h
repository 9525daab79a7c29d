#pragma once

#include "contract/backend/mediaengine.h"

#include <QImage>

#include <atomic>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace kirolane::tests {

/// One player whose pictures the test makes by hand, each of one colour. Fails the test if somebody still
/// listens to its pictures when it goes.
class PictureEngine : public PlayerEngine, private FrameSource {
public:
    PictureEngine() = default;
    ~PictureEngine() override {
        EXPECT_FALSE(m_listener) << "the widget outlives the engine";
        if (m_shared != nullptr) {
            ::munmap(m_shared, kRoom);
            ::close(m_memory);
        }
    }
    PictureEngine(const PictureEngine&) = delete;
    PictureEngine& operator=(const PictureEngine&) = delete;

    /// What the next Load gives: a file with pictures, or sound alone.
    void SetNextHasPicture(bool has) { m_nextHasPicture = has; }
    /// A new picture of the size that was asked for.
    void MakePicture(QColor color) { MakePicture(Picture(color)); }
    void MakePicture(const QImage& picture) {
        Draw(picture);
        m_hasFrame = true;
        if (m_listener)
            m_listener();
    }
    /// One that is not of the file now loaded.
    void MakeLatePicture(QColor color) {
        Draw(Picture(color));
        m_listener();
    }
    /// From now on pictures lie in memory that others can be handed.
    void HandOn() {
        m_memory = ::memfd_create("pictures", MFD_CLOEXEC);
        ASSERT_EQ(::ftruncate(m_memory, kRoom), 0);
        m_shared =
            static_cast<uchar*>(::mmap(nullptr, kRoom, PROT_READ | PROT_WRITE, MAP_SHARED, m_memory, 0));
    }
    [[nodiscard]] QSize AskedSize() const { return m_size; }
    [[nodiscard]] bool Watched() const { return m_listener != nullptr; }

    // PlayerEngine.
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
    static constexpr std::size_t kRoom = 8 << 20;
    static constexpr std::uint32_t kFirst = 4096;

    [[nodiscard]] QImage Picture(QColor color) const {
        QImage picture(m_size, QImage::Format_RGB32);
        picture.fill(color.rgb());
        return picture;
    }
    void Draw(QImage picture) {
        // The fourth byte is undefined by contract: here it is one that no viewer may trust.
        for (uchar* byte = picture.bits() + 3; byte < picture.bits() + picture.sizeInBytes(); byte += 4)
            *byte = 0;
        const std::lock_guard lock(m_mutex);
        m_picture = picture;
        if (m_shared != nullptr)
            std::memcpy(m_shared + kFirst, picture.constBits(),
                        static_cast<std::size_t>(picture.sizeInBytes()));
    }

    // FrameSource.
    void SetSize(std::int32_t width, std::int32_t height) override { m_size = {width, height}; }
    void SetListener(std::function<void()> listener) override { m_listener = std::move(listener); }
    [[nodiscard]] bool HasFrame() const override { return m_hasFrame; }
    [[nodiscard]] bool HasPicture() const override { return m_hasPicture; }
    void Visit(const std::function<void(const FrameView&)>& visit) const override {
        const std::lock_guard lock(m_mutex);
        if (!m_picture.isNull())
            visit({m_shared != nullptr ? m_shared + kFirst : m_picture.constBits(),
                   m_picture.width(),
                   m_picture.height(),
                   static_cast<std::int32_t>(m_picture.bytesPerLine()),
                   {m_memory, 1, kFirst}});
    }

    bool m_nextHasPicture = true;
    std::atomic<bool> m_hasPicture = false;
    std::atomic<bool> m_hasFrame = false;
    mutable std::mutex m_mutex;
    int m_memory = -1;
    uchar* m_shared = nullptr;
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
