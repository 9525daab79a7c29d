#pragma once

#include <string>

class QWidget;

namespace kirolane::qt {

/// Runs the folder dialog on the operator's display, by the window `near` if that is not null. The chosen
/// folder's native path, without "." and "..", "" if cancelled. It starts in `start`, the home folder if that
/// is empty, and leaves there the folder chosen.
std::string AskForFolder(QWidget* near, std::string& start);

} // namespace kirolane::qt
