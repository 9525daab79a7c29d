#pragma once

#include "contract/canvas.h"
#include "contract/movieplayer.h"
#include "contract/rectangle.h"
#include "contract/window.h"

namespace kirolane {

/// What the audience sees: one black window with the second player, the one with picture and sound. It has no
/// logic of its own; its keys are the console's commands.
class MonitorForm : public Window {
public:
    MonitorForm();

    Ref<MoviePlayer> QTM() const { return Control<MoviePlayer>("QTM"); }
    Ref<Rectangle> DummyBack() const { return Control<Rectangle>("DummyBack"); }
    Ref<Canvas> DummyQTM() const { return Control<Canvas>("DummyQTM"); }

    void Layout() override;
    void CreateControls() override;
    void AddMenuHandlers() override;

    /// Brings the console back in front unless it is hidden on purpose.
    void Event_Activate() override;
    void Event_EnableMenuItems() override;
    /// Curtain and player follow at once, also while a movie plays.
    void Event_ScreenChanged(std::int32_t width, std::int32_t height) override { FillScreen(width, height); }

    /// Everything but the window's own place, on a screen of that size which the window covers.
    void FillScreen(std::int32_t width, std::int32_t height);
};

} // namespace kirolane
