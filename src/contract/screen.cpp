#include "contract/screen.h"

#include "contract/core/runtime.h"
#include "contract/exceptions.h"
#include "contract/keyboard.h"

#include <algorithm>

namespace kirolane {

namespace {
std::vector<Rect> DistinctScreens() {
    std::vector<Rect> distinct;
    for (const Rect& screen : Runtime::Current().Windows().Screens())
        if (std::find(distinct.begin(), distinct.end(), screen) == distinct.end())
            distinct.push_back(screen);
    return distinct;
}
} // namespace

std::int32_t ScreenCount() {
    return static_cast<std::int32_t>(DistinctScreens().size());
}

Screen::Screen(std::int32_t index) {
    const auto screens = DistinctScreens();
    if (index < 0 || static_cast<std::size_t>(index) >= screens.size())
        throw OutOfBoundsException();
    m_rect = screens[static_cast<std::size_t>(index)];
}

bool Keyboard::AsyncKeyDown(std::int32_t code) {
    return Runtime::Current().Windows().KeyDown(code);
}

} // namespace kirolane
