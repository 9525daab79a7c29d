#pragma once

#include <initializer_list>
#include <memory>

namespace kirolane::bench {

/// The keyboard and the pointer of the X display, pressed as a person's hands press them: by the server, for
/// whatever window has the keyboard or lies below.
class Hands {
public:
    Hands();
    ~Hands();
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    /// Presses a chord of key symbols (X11/keysymdef.h), the modifiers first, and lets it go.
    void Press(std::initializer_list<unsigned> symbols);
    void DoubleClick(int x, int y);
    /// Gives what no window covers that colour.
    void PaintGround(unsigned color);

private:
    struct Display;
    std::unique_ptr<Display> m_display;
};

} // namespace kirolane::bench
