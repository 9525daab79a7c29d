#include "backends/qt/qtwindows.h"

#include "backends/qt/accessibility.h"
#include "backends/qt/convert.h"
#include "backends/qt/folderchooser.h"
#include "backends/qt/fonts.h"
#include "backends/qt/look.h"
#include "backends/qt/screens.h"
#include "backends/qt/showapplication.h"
#include "backends/qt/sleepinhibitor.h"
#include "backends/qt/starting_messages.h"
#include "backends/qt/windowpeer.h"
#include "backends/qt/words.h"
#include "contract/backend/host.h"
#include "contract/keyboard.h"
#include "contract/timer.h"
#include "contract/window.h"

#include <QIcon>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <QToolTip>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <utility>

namespace kirolane::qt {

namespace {

class QtTimerPeer final : public TimerPeer {
public:
    explicit QtTimerPeer(Timer& timer) {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(timer.Period());
        m_timer.callOnTimeout([&timer] { timer.ReportDue(); });
        m_timer.start();
    }

private:
    QTimer m_timer;
};

/// Stands above the console.
bool IsCompanion(const QtWindowPeer& peer) {
    const WindowFrame frame = peer.Held().Design().frame;
    return frame == WindowFrame::FloatingTool || frame == WindowFrame::Palette;
}

void ChoosePlatform() {
#ifdef KIROLANE_X11
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        if (qEnvironmentVariableIsEmpty("DISPLAY"))
            RefuseDesktop(
                qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
                    ? "DISPLAY is not set"
                    : "Xwayland is missing in this Wayland session (DISPLAY is not set); without it "
                      "no window can be put on a display");
        qputenv("QT_QPA_PLATFORM", "xcb"); // also in a Wayland session
    }
#endif
    // Else Qt leaves the panels in where there are several displays.
    qputenv("QT_RELY_ON_NET_WORKAREA_ATOM", "1");
}

} // namespace

QtWindows::QtWindows(int& argc, char** argv) {
    ChoosePlatform();
    const std::future<void> faces = ReadFacesAhead();
    // A tool that asks for a control which has just gone is no fault of the show.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.accessibility.atspi.warning=false"));
    // The commands stay in their windows; Qt would wait for the session's bus to ask for a place elsewhere.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    {
        const StartingMessages messages;
        m_application = std::make_unique<ShowApplication>(argc, argv);
    }
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        WriteErrorLine("start: QT_QPA_PLATFORM asks for Wayland, where no window can be put on a display");
    faces.wait();
    std::setlocale(LC_NUMERIC, "C"); // Qt takes the user's; libraries of the engine need a point in numbers
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("kirolane"));
    QApplication::setApplicationDisplayName(QString());
    QGuiApplication::setDesktopFileName(QStringLiteral("kirolane")); // the entry that the icon comes from
    auto look = std::make_unique<Look>();
    QApplication::setStyle(look.release()); // the application's from now on
    QApplication::setPalette(Look::Palette());
    QApplication::setFont(SystemFont());
    QToolTip::setFont(SystemFont());
    if (const QString face = AbsentFace(); !face.isEmpty())
        WriteErrorLine("start: the type face " + face.toStdString() +
                       " is not installed; small texts may be cut off or missing");
    // While the display server makes the first windows ready: nobody sees them sooner for it.
    QTimer::singleShot(0, m_application.get(),
                       [] { QApplication::setWindowIcon(QIcon(QStringLiteral(":/pictures/Kirolane.png"))); });
    m_words = std::make_unique<Words>();
    QCoreApplication::installTranslator(m_words.get());
    m_inhibitor = std::make_unique<SleepInhibitor>();
    InstallAccessibility();
    WatchScreens();
}

QtWindows::~QtWindows() {
    // Windows that went after the loop had ended still wait for it.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::unique_ptr<WindowPeer> QtWindows::MakeWindow(Window& window) {
    return std::make_unique<QtWindowPeer>(window, *this);
}

std::unique_ptr<TimerPeer> QtWindows::MakeTimer(Timer& timer) {
    return std::make_unique<QtTimerPeer>(timer);
}

Point QtWindows::DefaultPlace(const Window& window) {
    const bool palette = window.Is(WindowRole::Palette);
    const auto console = host::Console();
    if (console == nullptr || !(palette || window.Is(WindowRole::Audience)))
        return ConsolePlace();
    // It may not be up yet, but it knows where it will stand.
    const Rect place{console->Left(), console->Top(), console->Width(), console->Height()};
    return palette ? PalettePlace(place, window.Width()) : AudiencePlace(place);
}

std::vector<Rect> QtWindows::Screens() const {
    auto rects = ScreenRects();
    for (const QtWindowPeer* peer : m_peers) { // a third display at its left is not the audience's
        const auto covered = std::find(rects.begin() + 1, rects.end(), peer->CoveredScreen());
        if (covered != rects.end())
            std::rotate(rects.begin() + 1, covered, covered + 1);
    }
    return rects;
}

bool QtWindows::KeyDown(int code) const {
    switch (code) {
    case Keyboard::kLeftArrow:
        return m_application->KeyHeld(Qt::Key_Left);
    case Keyboard::kRightArrow:
        return m_application->KeyHeld(Qt::Key_Right);
    default:
        return false;
    }
}

std::string QtWindows::ChooseFolder() {
    const QtWindowPeer* console = Console();
    if (!m_lastFolder.empty() && !host::FolderAnswers(m_lastFolder))
        m_lastFolder.clear();
    return AskForFolder(console == nullptr ? nullptr : &console->Form(), m_lastFolder);
}

void QtWindows::ShowStartFailure(const std::string& text) {
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return; // nobody could answer
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Kirolane"), ToText(text), QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

int QtWindows::RunLoop() {
    const int status = QApplication::exec();
    // The system keeps what a process has open until its last thread has gone, which a disk that does not
    // answer may hold for ever: nobody is to look at windows that nothing moves any more.
    for (QWidget* window : QApplication::topLevelWidgets())
        window->hide();
    QGuiApplication::sync();
    return status;
}

void QtWindows::EndLoop(int status) {
    QApplication::exit(status);
}

void QtWindows::Wake() {
    m_application->Wake();
}

void QtWindows::RequestIdle() {
    m_application->RequestIdle();
}

void QtWindows::Add(QtWindowPeer& peer) {
    m_peers.push_back(&peer);
}

void QtWindows::Remove(QtWindowPeer& peer) {
    std::erase(m_peers, &peer);
    WindowsChanged();
}

void QtWindows::WindowsChanged() {
    m_inhibitor->Set(std::any_of(m_peers.begin(), m_peers.end(), [](const QtWindowPeer* peer) {
        return peer->Held().Is(WindowRole::Audience) && peer->Held().Visible();
    }));
}

void QtWindows::KeepAboveConsole(QtWindowPeer& peer) {
    QtWindowPeer* console = Console();
    if (!IsCompanion(peer) || console == nullptr)
        return;
    peer.Form().winId(); // a window of its own is what the window manager can place
    console->Form().winId();
    peer.Form().windowHandle()->setTransientParent(console->Form().windowHandle());
}

void QtWindows::RaiseCompanions() {
    for (QtWindowPeer* peer : m_peers)
        if (IsCompanion(*peer) && peer->Form().isVisible())
            peer->Form().raise();
}

void QtWindows::WatchScreens() {
    // At these signals Qt is in the middle of moving windows about: a turn later shows what has come of it.
    m_screensChange = std::make_unique<QTimer>();
    m_screensChange->setSingleShot(true);
    m_screensChange->callOnTimeout([this] { ScreensChanged(); });
    // Window managers bring windows onto displays by rules of their own, which know of no audience.
    m_secondLook = std::make_unique<QTimer>();
    m_secondLook->setSingleShot(true);
    m_secondLook->setInterval(std::chrono::seconds(1));
    m_secondLook->callOnTimeout([this] {
        FollowScreens();
        m_keyboard->End();
    });
    m_keyboard = std::make_unique<KeyboardKeeper>();
    const auto soon = [this] {
        m_keyboard->Begin();
        m_screensChange->start();
    };
    const auto watch = [this, soon](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, m_screensChange.get(), soon);
    };
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
    const QGuiApplication* application = m_application.get();
    QObject::connect(application, &QGuiApplication::screenAdded, m_screensChange.get(), watch);
    QObject::connect(application, &QGuiApplication::screenAdded, m_screensChange.get(), soon);
    QObject::connect(application, &QGuiApplication::screenRemoved, m_screensChange.get(), soon);
    QObject::connect(application, &QGuiApplication::primaryScreenChanged, m_screensChange.get(), soon);
}

void QtWindows::ScreensChanged() {
    for (QtWindowPeer* peer : m_peers)
        peer->Place().ScreensChanged();
    FollowScreens();
    m_secondLook->start();
}

void QtWindows::FollowScreens() {
    if (host::Exists())
        host::ReportScreensChanged();
    m_keyboard->GiveBack();
    QtWindowPeer* console = Console();
    if (console == nullptr || !console->Form().isVisible())
        return;
    const bool covered = std::any_of(m_peers.begin(), m_peers.end(), [&](QtWindowPeer* peer) {
        return ToQt(peer->CoveredScreen()).contains(console->Form().geometry().center());
    });
    const auto* active = dynamic_cast<FormWindow*>(QApplication::activeWindow());
    const bool keyboard =
        QApplication::activeWindow() == nullptr || (active != nullptr && active->isFullScreen());
    if (covered) // the operator is left with the audience's display: the console goes in front
        console->BringToFront(keyboard);
}

QtWindowPeer* QtWindows::Console() const {
    const auto it = std::find_if(m_peers.begin(), m_peers.end(), [](const QtWindowPeer* peer) {
        return peer->Held().Is(WindowRole::Console);
    });
    return it == m_peers.end() ? nullptr : *it;
}

} // namespace kirolane::qt
