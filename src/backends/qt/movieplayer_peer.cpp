#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/reporting.h"
#include "contract/backend/mediaengine.h"
#include "contract/movieplayer.h"
#include "contract/window.h"

#include <QCoreApplication>
#include <QEvent>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <atomic>

namespace kirolane::qt {

namespace {

const auto kNewPicture = static_cast<QEvent::Type>(QEvent::registerEventType());

/// The pictures of one player, black where it has none.
class ScreenWidget : public QWidget {
public:
    explicit ScreenWidget(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }
    ~ScreenWidget() override { SetFrames(nullptr); }
    ScreenWidget(const ScreenWidget&) = delete;
    ScreenWidget& operator=(const ScreenWidget&) = delete;

    void SetFrames(FrameSource* frames) {
        if (frames == m_frames)
            return;
        if (m_frames != nullptr) {
            m_frames->SetListener({});
            m_frames->SetPainter({});
        }
        m_frames = frames;
        if (m_frames == nullptr)
            return;
        m_frames->SetListener([this] {
            m_unpainted = true;
            if (!m_posted.exchange(true)) // the engine's worker: only posts, and one at a time
                QCoreApplication::postEvent(this, new QEvent(kNewPicture));
        });
        m_frames->SetPainter([this] {
            if (m_unpainted)
                repaint();
        });
    }
    [[nodiscard]] FrameSource* Frames() const { return m_frames; }

    void SetLoaded(bool loaded) { m_loaded = loaded; }
    void SetOnPicture(std::function<void()> call) { m_onPicture = std::move(call); }

    /// Whether the engine is to make pictures at all.
    void SetWanted(bool wanted) {
        m_wanted = wanted;
        AskForSize();
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() != kNewPicture)
            return QWidget::event(event);
        m_posted = false;
        update();
        if (m_onPicture)
            m_onPicture();
        return true;
    }

    void resizeEvent(QResizeEvent* /*event*/) override { AskForSize(); }

    void paintEvent(QPaintEvent* /*event*/) override {
        m_unpainted = false;
        AskForSize(); // the window may have come to a screen of finer pixels
        QPainter painter(this);
        bool drawn = false;
        if (m_loaded && m_frames != nullptr && m_frames->HasPicture())
            m_frames->Visit([&](const FrameView& frame) {
                QImage image(frame.pixels, frame.width, frame.height, frame.stride, QImage::Format_RGB32);
                painter.setCompositionMode(QPainter::CompositionMode_Source);
                if (image.size() == DeviceSize()) {
                    image.setDevicePixelRatio(devicePixelRatioF());
                    painter.drawImage(0, 0, image);
                } else {
                    painter.setRenderHint(QPainter::SmoothPixmapTransform);
                    painter.drawImage(rect(), image);
                }
                drawn = true;
            });
        if (!drawn)
            painter.fillRect(rect(), Qt::black);
    }

private:
    [[nodiscard]] QSize DeviceSize() const {
        return {qRound(width() * devicePixelRatioF()), qRound(height() * devicePixelRatioF())};
    }
    void AskForSize() {
        const QSize size = m_wanted ? DeviceSize() : QSize(0, 0);
        if (m_frames == nullptr || size == m_asked)
            return;
        m_asked = size;
        m_frames->SetSize(size.width(), size.height());
    }

    FrameSource* m_frames = nullptr;
    bool m_loaded = false;
    bool m_wanted = false;
    QSize m_asked;
    std::function<void()> m_onPicture;
    std::atomic<bool> m_posted = false;
    std::atomic<bool> m_unpainted = false;
};

class MoviePlayerPeer final : public ControlPeer {
public:
    MoviePlayerPeer(MoviePlayer& player, QWidget& content) : ControlPeer(player) {
        m_screen = new Reporting<ScreenWidget>(GetLink(), &content);
        m_screen->SetFrames(player.Engine() == nullptr ? nullptr : player.Engine()->Frames());
        SetSpokenRole(*m_screen, QAccessible::Animation);
        Adopt(*m_screen);
    }
    /// The engine goes with the control, ahead of the widget.
    ~MoviePlayerPeer() override { m_screen->SetFrames(nullptr); }
    MoviePlayerPeer(const MoviePlayerPeer&) = delete;
    MoviePlayerPeer& operator=(const MoviePlayerPeer&) = delete;

    /// The first picture is at hand, or there will be none.
    [[nodiscard]] bool ReadyToShow() const override {
        const FrameSource* frames = m_screen->Frames();
        return frames == nullptr || Held<MoviePlayer>().Movie().IsNil() || !frames->HasPicture() ||
               frames->HasFrame();
    }
    void OnReady(const std::function<void()>& ready) override { m_screen->SetOnPicture(ready); }

private:
    void UpdatePlace() override {
        const auto& player = Held<MoviePlayer>();
        const int height = std::max(player.Height() - MoviePlayer::kHiddenStrip, 0);
        const QRect place(player.Left(), player.Top(), player.Width(), height);
        if (m_screen->geometry() != place)
            m_screen->setGeometry(place);
    }
    void UpdateOwn() override {
        const auto& player = Held<MoviePlayer>();
        m_screen->SetLoaded(!player.Movie().IsNil());
        // A player that stands beside its window is heard and never seen.
        const QRect window(0, 0, player.Window().Width(), player.Window().Height());
        m_screen->SetWanted(window.intersects(m_screen->geometry()));
        m_screen->update();
    }

    ScreenWidget* m_screen;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(MoviePlayer& player, QWidget& content) {
    return std::make_unique<MoviePlayerPeer>(player, content);
}

} // namespace kirolane::qt
