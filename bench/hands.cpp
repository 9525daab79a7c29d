#include "hands.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace kirolane::bench {

struct Hands::Display {
    Display() : x(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(x) != 0)
            throw std::runtime_error("there is no display");
        const xcb_setup_t* setup = xcb_get_setup(x);
        root = xcb_setup_roots_iterator(setup).data->root;
        first = setup->min_keycode;
        const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
        auto* reply = xcb_get_keyboard_mapping_reply(x, xcb_get_keyboard_mapping(x, first, count), nullptr);
        perKey = reply->keysyms_per_keycode;
        const xcb_keysym_t* begin = xcb_get_keyboard_mapping_keysyms(reply);
        symbols.assign(begin, begin + xcb_get_keyboard_mapping_keysyms_length(reply));
        std::free(reply);
    }
    ~Display() { xcb_disconnect(x); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Keys are found by what they give without a modifier.
    [[nodiscard]] std::uint8_t CodeOf(unsigned symbol) const {
        for (std::size_t i = 0; i < symbols.size(); i += perKey)
            if (symbols[i] == symbol)
                return static_cast<std::uint8_t>(first + i / perKey);
        throw std::runtime_error("the keyboard has not that key");
    }
    void Send(std::uint8_t type, std::uint8_t detail, int left = 0, int top = 0) const {
        xcb_test_fake_input(x, type, detail, XCB_CURRENT_TIME, root, static_cast<std::int16_t>(left),
                            static_cast<std::int16_t>(top), 0);
    }

    xcb_connection_t* x;
    xcb_window_t root = 0;
    unsigned first = 0;
    unsigned perKey = 1;
    std::vector<xcb_keysym_t> symbols;
};

Hands::Hands() : m_display(std::make_unique<Display>()) {}

Hands::~Hands() = default;

void Hands::Press(std::initializer_list<unsigned> symbols) {
    std::vector<std::uint8_t> codes;
    for (const unsigned symbol : symbols)
        codes.push_back(m_display->CodeOf(symbol));
    for (const std::uint8_t code : codes)
        m_display->Send(XCB_KEY_PRESS, code);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        m_display->Send(XCB_KEY_RELEASE, *code);
    xcb_flush(m_display->x);
}

void Hands::DoubleClick(int x, int y) {
    m_display->Send(XCB_MOTION_NOTIFY, 0, x, y);
    for (int click = 0; click < 2; ++click) {
        m_display->Send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
        m_display->Send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
    }
    xcb_flush(m_display->x);
}

void Hands::PaintGround(unsigned color) {
    const std::uint32_t value = color;
    xcb_change_window_attributes(m_display->x, m_display->root, XCB_CW_BACK_PIXEL, &value);
    xcb_clear_area(m_display->x, 0, m_display->root, 0, 0, 0, 0);
    xcb_flush(m_display->x);
}

} // namespace kirolane::bench
