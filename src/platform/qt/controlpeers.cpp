#include "platform/qt/controlpeers.h"

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
#include "platform/updownarrows.h"

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
