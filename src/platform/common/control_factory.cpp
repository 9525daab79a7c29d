#include "platform/common/control_factory.h"

#include "platform/bevelbutton.h"
#include "platform/canvas.h"
#include "platform/checkbox.h"
#include "platform/editfield.h"
#include "platform/groupbox.h"
#include "platform/listbox.h"
#include "platform/movieplayer.h"
#include "platform/popupmenu.h"
#include "platform/progressbar.h"
#include "platform/pushbutton.h"
#include "platform/rectangle.h"
#include "platform/slider.h"
#include "platform/statictext.h"
#include "platform/tabpanel.h"
#include "platform/thread.h"
#include "platform/timer.h"
#include "platform/updownarrows.h"

namespace kirolane {

std::shared_ptr<Control> MakeControl(class Window& window, const ControlDesign& design) {
    switch (design.kind) {
    case ControlKind::BevelButton:
        return std::make_shared<BevelButton>(window, design);
    case ControlKind::Canvas:
        return std::make_shared<Canvas>(window, design);
    case ControlKind::CheckBox:
        return std::make_shared<CheckBox>(window, design);
    case ControlKind::EditField:
        return std::make_shared<EditField>(window, design);
    case ControlKind::GroupBox:
        return std::make_shared<GroupBox>(window, design);
    case ControlKind::Listbox:
        return std::make_shared<Listbox>(window, design);
    case ControlKind::MoviePlayer:
        return std::make_shared<MoviePlayer>(window, design);
    case ControlKind::PopupMenu:
        return std::make_shared<PopupMenu>(window, design);
    case ControlKind::ProgressBar:
        return std::make_shared<ProgressBar>(window, design);
    case ControlKind::PushButton:
        return std::make_shared<PushButton>(window, design);
    case ControlKind::Rectangle:
        return std::make_shared<Rectangle>(window, design);
    case ControlKind::Slider:
        return std::make_shared<Slider>(window, design);
    case ControlKind::StaticText:
        return std::make_shared<StaticText>(window, design);
    case ControlKind::TabPanel:
        return std::make_shared<TabPanel>(window, design);
    case ControlKind::Thread:
        return std::make_shared<Thread>(window, design);
    case ControlKind::Timer:
        return std::make_shared<Timer>(window, design);
    case ControlKind::UpDownArrows:
        return std::make_shared<UpDownArrows>(window, design);
    }
    return nullptr;
}

} // namespace kirolane
