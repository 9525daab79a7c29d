#pragma once

#include "contract/control_design.h"

#include <QFont>
#include <QString>

#include <future>

namespace kirolane::qt {

/// Has what the system says of its type faces read on another thread, which takes a tenth of the start. To be
/// called before the application is made, and waited for before a face is asked for.
std::future<void> ReadFacesAhead();

/// The font of a control. The designs name faces of another desktop; each stands for the face here that has
/// its character and fits its boxes.
QFont FontOf(const ControlDesign& design);

/// The face that small Japanese type is drawn best in, where neither it nor any that can stand for it is
/// installed; else "".
QString AbsentFace();

/// The font of menus, captions of frames and tabs, and of what has no design: the system's own, in a size
/// that the fixed places allow.
QFont SystemFont();

} // namespace kirolane::qt
