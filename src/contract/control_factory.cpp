#include "contract/control_factory.h"

#include "contract/bevelbutton.h"
#include "contract/canvas.h"
#include "contract/checkbox.h"
#include "contract/editfield.h"
#include "contract/groupbox.h"
#include "contract/listbox.h"
#include "contract/movieplayer.h"
#include "contract/popupmenu.h"
#include "contract/progressbar.h"
#include "contract/pushbutton.h"
#include "contract/rectangle.h"
#include "contract/slider.h"
#include "contract/statictext.h"
#include "contract/tabpanel.h"
#include "contract/thread.h"
#include "contract/timer.h"
#include "contract/updownarrows.h"

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
