#include "backends/qt/pane.h"

#ifdef KIROLANE_PRESENTER
#include "backends/qt/presenter/presenter.h"
#include "backends/qt/presenter/x_pane.h"
#endif

#include <utility>

namespace kirolane::qt {

#ifdef KIROLANE_PRESENTER

std::unique_ptr<Pane> MakePane(FrameSource& frames, std::function<void()> tell) {
    auto presenter = Presenter::Use();
    if (presenter == nullptr)
        return nullptr;
    return std::make_unique<XPane>(std::move(presenter), frames, std::move(tell));
}

#else

std::unique_ptr<Pane> MakePane(FrameSource& /*frames*/, std::function<void()> /*tell*/) {
    return nullptr;
}

#endif

} // namespace kirolane::qt
