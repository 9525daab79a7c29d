#include "backends/qt/accessibility.h"
#include "backends/qt/controlpeers.h"
#include "backends/qt/pane.h"
#include "backends/qt/picture_painting.h"
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

/// The pictures of one player, black where it has none. The presenter puts them where it can and nothing of
/// the window lies over them; else Qt paints them.
class ScreenWidget : public QWidget {
public:
    explicit ScreenWidget(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        parent->installEventFilter(this);
    }
    ~ScreenWidget() override { SetFrames(nullptr); }
    ScreenWidget(const ScreenWidget&) = delete;
    ScreenWidget& operator=(const ScreenWidget&) = delete;

    void SetFrames(FrameSource* frames) {
        if (frames == m_frames)
            return;
        if (m_frames != nullptr) {
            m_frames->SetListener({});
            m_frames->SetPainter({});
            m_pane.reset();
        }
        m_frames = frames;
        if (m_frames == nullptr)
            return;
        m_pane = MakePane(*m_frames, [this] { Post(); });
        m_frames->SetListener([this] {
            m_unpainted = true;
            if (m_pane != nullptr && m_pane->Works())
                m_pane->NewPicture();
            else
                Post();
        });
        m_frames->SetPainter([this] {
            if (m_unpainted && !m_presented)
                repaint();
        });
    }
    [[nodiscard]] FrameSource* Frames() const { return m_frames; }

    void SetLoaded(bool loaded) { m_loaded = loaded; }
    /// All that belongs to one change has been made.
    void Settle() {
        m_black = !HasPicture();
        Follow();
    }
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
        Settle();
        update();
        if (m_onPicture)
            m_onPicture();
        return true;
    }

    /// Where the area moves that the controls stand on, they are not told.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Move)
            Follow();
        return QWidget::eventFilter(watched, event);
    }
    void showEvent(QShowEvent* /*event*/) override { Follow(); }
    void hideEvent(QHideEvent* /*event*/) override { Follow(); }
    void moveEvent(QMoveEvent* /*event*/) override { Follow(); }
    void resizeEvent(QResizeEvent* /*event*/) override {
        AskForSize();
        Follow();
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        m_unpainted = false;
        AskForSize(); // the window may have come to a screen of finer pixels
        Follow();
        if (m_presented)
            return; // what is below the pane is not seen
        QPainter painter(this);
        bool drawn = false;
        if (HasPicture())
            m_frames->Visit([&](const FrameView& frame) {
                QImage image = ImageOf(frame);
                if (image.size() == DeviceSize()) {
                    painter.setCompositionMode(QPainter::CompositionMode_Source);
                    image.setDevicePixelRatio(devicePixelRatioF());
                    painter.drawImage(0, 0, image);
                } else {
                    PaintStretched(painter, image, rect());
                }
                drawn = true;
            });
        if (!drawn)
            painter.fillRect(rect(), Qt::black);
    }

private:
    /// Any thread; only posts, and one at a time.
    void Post() {
        if (!m_posted.exchange(true))
            QCoreApplication::postEvent(this, new QEvent(kNewPicture));
    }
    [[nodiscard]] bool HasPicture() const {
        return m_loaded && m_frames != nullptr && m_frames->HasPicture();
    }
    /// Another control of the window stands in front of the picture.
    [[nodiscard]] bool IsCovered() const {
        const QObjectList& siblings = parentWidget()->children();
        const auto over = std::find(siblings.begin(), siblings.end(), this);
        return std::any_of(over + 1, siblings.end(), [this](const QObject* object) {
            const auto* widget = qobject_cast<const QWidget*>(object);
            return widget != nullptr && !widget->isHidden() && widget->geometry().intersects(geometry());
        });
    }
    /// Tells the presenter where the pictures go now. The one place where it is decided who shows them.
    void Follow() {
        if (m_pane == nullptr)
            return;
        const double scale = devicePixelRatioF();
        const QPoint place = mapTo(window(), QPoint());
        PaneOrder order;
        order.window = static_cast<std::uint32_t>(window()->internalWinId());
        order.place = QRect(QPoint(qRound(place.x() * scale), qRound(place.y() * scale)), DeviceSize());
        order.shown = m_pane->Works() && isVisible() && order.window != 0 && !IsCovered();
        order.black = m_black;
        if (m_presented && !order.shown)
            update();
        m_presented = order.shown;
        m_pane->Order(order);
    }
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
    std::unique_ptr<Pane> m_pane;
    bool m_presented = false; ///< by the pane, not by Qt
    bool m_loaded = false;
    bool m_black = true;
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
    void WindowSettled() override { m_screen->Settle(); }

    ScreenWidget* m_screen;
};

} // namespace

std::unique_ptr<ControlPeer> MakePeer(MoviePlayer& player, QWidget& content) {
    return std::make_unique<MoviePlayerPeer>(player, content);
}

} // namespace kirolane::qt
