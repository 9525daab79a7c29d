#include "backends/qt/formwindow.h"

#include "backends/qt/accessibility.h"
#include "backends/qt/convert.h"
#include "backends/qt/fonts.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QWindow>
#include <QWindowStateChangeEvent>

#include <algorithm>

namespace kirolane::qt {

namespace {

Qt::WindowFlags FlagsOf(const WindowDesign& design) {
    Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (design.closeButton)
        flags |= Qt::WindowCloseButtonHint | Qt::WindowSystemMenuHint;
    if (design.minimizeButton)
        flags |= Qt::WindowMinimizeButtonHint | Qt::WindowSystemMenuHint;
    if (design.role == WindowRole::Palette)
        flags |= Qt::WindowDoesNotAcceptFocus;
    switch (design.frame) {
    case WindowFrame::Plain:
        return Qt::Window | Qt::FramelessWindowHint;
    case WindowFrame::FloatingTool:
        return Qt::Dialog | flags;
    case WindowFrame::Palette:
        return Qt::Tool | flags;
    case WindowFrame::Document:
    case WindowFrame::Metal:
        break;
    }
    return Qt::Window | flags;
}

} // namespace

int MenuBarHeight() {
    return std::max(QFontMetrics(SystemFont()).height() + 8, 22);
}

FormWindow::FormWindow(Window& window, Listener& listener)
    : QWidget(nullptr, FlagsOf(window.Design())), m_link(window), m_listener(&listener) {
    const QString name = ToText(window.Name());
    m_quiet = window.Is(WindowRole::Palette);
    if (m_quiet)
        SetQuiet(*this);
    else
        SetSpokenRole(*this, window.Is(WindowRole::Dialog) ? QAccessible::Dialog : QAccessible::Window);
    setObjectName(name);
    Describe(*this, name);
    setFocusPolicy(Qt::NoFocus);
    m_content = new QWidget(this);
    if (window.Is(WindowRole::Console)) {
        m_bar = new QMenuBar(this);
        m_bar->setNativeMenuBar(false);
        // Alt alone opens no menu (Look), so this is the way to them without a pointer.
        auto* open = new QShortcut(QKeySequence(Qt::Key_F10), m_bar);
        connect(open, &QShortcut::activated, m_bar, [bar = m_bar] {
            if (!bar->actions().isEmpty())
                bar->setActiveAction(bar->actions().constFirst());
        });
    }
    if (window.Is(WindowRole::Audience))
        setCursor(Qt::BlankCursor);
    // The audience's window and the palette come up beside the one that has the keyboard.
    if (window.Is(WindowRole::Audience) || window.Is(WindowRole::Palette))
        setAttribute(Qt::WA_ShowWithoutActivating);
    m_commands = std::make_unique<WindowCommands>(m_link, *this, m_bar);
}

void FormWindow::Detach() {
    m_link.Cut();
    m_listener = nullptr;
    hide();
    deleteLater();
}

void FormWindow::SetBarShown(bool shown) {
    m_barShown = shown && m_bar != nullptr;
    if (m_bar != nullptr)
        m_bar->setVisible(m_barShown);
    LayOut();
}

void FormWindow::ShowTitle(const QString& title) {
    if (m_title == title)
        return;
    m_title = title;
    if (m_quiet)
        SetFrameTitle();
    else
        setWindowTitle(title); // which is what a screen reader calls it
}

void FormWindow::SetFrameTitle() {
    if (windowHandle() != nullptr)
        windowHandle()->setTitle(m_title); // which no tool is told of
}

void FormWindow::SetBackground(const Window& window) {
    QPalette colors;
    if (window.HasBackColor())
        colors.setColor(QPalette::Window, ToQt(window.BackColor()));
    m_content->setPalette(colors);
    m_content->setAutoFillBackground(true);
    if (window.Is(WindowRole::Audience))
        setPalette(colors); // nothing else may shine through, whatever the size
}

bool FormWindow::event(QEvent* event) {
    const bool activated = event->type() == QEvent::WindowActivate;
    if (activated || event->type() == QEvent::WindowDeactivate) {
        const bool handled = QWidget::event(event);
        if (m_active != activated && m_listener != nullptr) {
            m_active = activated;
            m_listener->ActiveChanged(activated);
        }
        return handled;
    }
    return QWidget::event(event);
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore(); // whether the window goes is the contract's to say
    if (m_listener != nullptr)
        m_listener->CloseRequested();
}

void FormWindow::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (m_listener != nullptr)
        m_listener->KeyLeft(*event);
}

void FormWindow::showEvent(QShowEvent* /*event*/) {
    if (m_quiet)
        SetFrameTitle(); // the native window may be a new one
}

void FormWindow::moveEvent(QMoveEvent* /*event*/) {
    if (m_listener != nullptr)
        m_listener->PlaceChanged();
}

void FormWindow::resizeEvent(QResizeEvent* /*event*/) {
    LayOut();
    if (m_listener != nullptr)
        m_listener->PlaceChanged();
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || m_listener == nullptr)
        return;
    const auto before = static_cast<QWindowStateChangeEvent*>(event)->oldState();
    if ((before & Qt::WindowMinimized) && !isMinimized())
        m_listener->Restored();
}

void FormWindow::LayOut() {
    const int bar = BarHeight();
    if (m_bar != nullptr)
        m_bar->setGeometry(0, 0, width(), MenuBarHeight());
    m_content->setGeometry(0, bar, width(), height() - bar);
}

} // namespace kirolane::qt
