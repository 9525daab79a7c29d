#pragma once

#include "backends/qt/controlpeer.h"

#include <memory>

namespace kirolane {
class BevelButton;
class Canvas;
class CheckBox;
class EditField;
class GroupBox;
class Listbox;
class MoviePlayer;
class PopupMenu;
class ProgressBar;
class PushButton;
class Rectangle;
class Slider;
class StaticText;
class TabPanel;
class UpDownArrows;
} // namespace kirolane

/// One peer a control class, each in a file of its own. `content` is the window's content area, the parent of
/// all widgets: places count from there, also inside a frame or a page.
namespace kirolane::qt {

std::unique_ptr<ControlPeer> MakePeer(BevelButton& button, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(Canvas& canvas, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(CheckBox& box, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(EditField& field, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(GroupBox& box, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(Listbox& list, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(MoviePlayer& player, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(PopupMenu& popup, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(ProgressBar& bar, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(PushButton& button, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(Rectangle& rectangle, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(Slider& slider, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(StaticText& label, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(TabPanel& tabs, QWidget& content);
std::unique_ptr<ControlPeer> MakePeer(UpDownArrows& arrows, QWidget& content);

/// The peer of the control's class.
std::unique_ptr<ControlPeer> MakeControlPeer(RectControl& control, QWidget& content);

} // namespace kirolane::qt
