#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace kirolane::qt {

/// The presenter's own connection to the X server. Any thread, one at a time.
class XLink {
public:
    /// Null where pictures cannot be put by shared memory: the server is on another machine, or without
    /// MIT-SHM that takes descriptors, or its pixels are not 32 bits of blue, green and red. Waits for the
    /// server.
    static std::unique_ptr<XLink> Open(const std::string& display);
    ~XLink();
    XLink(const XLink&) = delete;
    XLink& operator=(const XLink&) = delete;

    [[nodiscard]] xcb_connection_t* Get() const { return m_connection; }
    [[nodiscard]] const xcb_screen_t& Screen() const { return *m_screen; }
    /// The kind of event that tells that a picture has been read.
    [[nodiscard]] int Completion() const { return m_completion; }
    /// The server has refused memory.
    [[nodiscard]] bool IsRefusal(const xcb_generic_error_t& error) const;

    /// Has the server read that memory, which stays the caller's too.
    [[nodiscard]] xcb_shm_seg_t Attach(int memory);

private:
    XLink(xcb_connection_t* connection, int screen);
    [[nodiscard]] bool IsLocal() const;
    [[nodiscard]] bool HasOurPixels() const;
    bool TryMemory();

    xcb_connection_t* m_connection;
    const xcb_screen_t* m_screen = nullptr;
    int m_opcode = 0;
    int m_completion = 0;
};

} // namespace kirolane::qt
