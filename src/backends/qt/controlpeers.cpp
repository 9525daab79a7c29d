#include "backends/qt/controlpeers.h"

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
#include "contract/updownarrows.h"

namespace kirolane::qt {

namespace {
template <class T> std::unique_ptr<ControlPeer> Make(RectControl& control, QWidget& content) {
    return MakePeer(static_cast<T&>(control), content);
}
} // namespace

std::unique_ptr<ControlPeer> MakeControlPeer(RectControl& control, QWidget& content) {
    switch (control.Design().kind) {
    case ControlKind::BevelButton:
        return Make<BevelButton>(control, content);
    case ControlKind::Canvas:
        return Make<Canvas>(control, content);
    case ControlKind::CheckBox:
        return Make<CheckBox>(control, content);
    case ControlKind::EditField:
        return Make<EditField>(control, content);
    case ControlKind::GroupBox:
        return Make<GroupBox>(control, content);
    case ControlKind::Listbox:
        return Make<Listbox>(control, content);
    case ControlKind::MoviePlayer:
        return Make<MoviePlayer>(control, content);
    case ControlKind::PopupMenu:
        return Make<PopupMenu>(control, content);
    case ControlKind::ProgressBar:
        return Make<ProgressBar>(control, content);
    case ControlKind::PushButton:
        return Make<PushButton>(control, content);
    case ControlKind::Rectangle:
        return Make<Rectangle>(control, content);
    case ControlKind::Slider:
        return Make<Slider>(control, content);
    case ControlKind::StaticText:
        return Make<StaticText>(control, content);
    case ControlKind::TabPanel:
        return Make<TabPanel>(control, content);
    case ControlKind::UpDownArrows:
        return Make<UpDownArrows>(control, content);
    case ControlKind::Thread:
    case ControlKind::Timer:
        break; // not seen
    }
    return nullptr;
}

} // namespace kirolane::qt
