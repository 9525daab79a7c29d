#include "backends/qt/presenter/presenter.h"

#include "backends/qt/presenter/x_link.h"
#include "backends/qt/presenter/x_pane.h"
#include "backends/qt/x11.h"

#include <array>
#include <cstdlib>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace kirolane::qt {

std::shared_ptr<Presenter> Presenter::Use() {
    static std::weak_ptr<Presenter> one;
    auto presenter = one.lock();
    if (presenter == nullptr) {
        const std::string display = X11DisplayName();
        if (display.empty() || std::getenv("KIROLANE_QT_PAINTS") != nullptr) // NOLINT(concurrency-mt-unsafe)
            return nullptr;
        presenter = std::shared_ptr<Presenter>(new Presenter(display));
        one = presenter;
    }
    return presenter;
}

Presenter::Presenter(std::string display)
    : m_display(std::move(display)), m_wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_thread([this] { Run(); }) {}

Presenter::~Presenter() {
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    Wake();
    m_thread.join();
    ::close(m_wake);
}

void Presenter::Wake() const {
    ::eventfd_write(m_wake, 1);
}

void Presenter::Add(XPane& pane) {
    {
        const std::lock_guard lock(m_mutex);
        m_panes.push_back(&pane);
    }
    Wake();
}

void Presenter::Remove(XPane& pane) {
    const std::lock_guard lock(m_mutex);
    std::erase(m_panes, &pane);
    if (m_x == nullptr)
        return;
    pane.Close(*m_x);
    xcb_flush(m_x->Get());
}

void Presenter::Fail() {
    m_works = false;
    for (const XPane* pane : m_panes)
        pane->Tell();
}

void Presenter::Run() {
    auto x = XLink::Open(m_display);
    if (x == nullptr)
        return; // Qt paints
    std::array<pollfd, 2> sources{{{xcb_get_file_descriptor(x->Get()), POLLIN, 0}, {m_wake, POLLIN, 0}}};
    {
        const std::lock_guard lock(m_mutex);
        m_x = std::move(x);
        m_works = true;
        for (const XPane* pane : m_panes)
            pane->Tell();
    }
    while (Turn()) {
        ::poll(sources.data(), sources.size(), -1);
        eventfd_t count = 0;
        ::eventfd_read(m_wake, &count);
    }
}

bool Presenter::Turn() {
    const std::lock_guard lock(m_mutex);
    xcb_connection_t* connection = m_x->Get();
    xcb_generic_event_t* event = nullptr;
    do {
        while ((event = xcb_poll_for_event(connection)) != nullptr)
            TakeEvent(event);
        for (XPane* pane : m_panes)
            pane->Turn(*m_x);
        xcb_flush(connection);
        event = xcb_poll_for_queued_event(connection); // what came in meanwhile: nothing would wake for that
        if (event != nullptr)
            TakeEvent(event);
    } while (event != nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        Fail();
        return false;
    }
    return !m_quit;
}

void Presenter::TakeEvent(xcb_generic_event_t* event) {
    if (event->response_type == 0 && m_x->IsRefusal(*reinterpret_cast<xcb_generic_error_t*>(event)))
        Fail();
    for (XPane* pane : m_panes)
        pane->Take(*m_x, *event);
    std::free(event);
}

} // namespace kirolane::qt
