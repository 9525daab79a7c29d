#include "sound/musicform.h"

#include "shell/menu.h"
#include "sound/musicform_controls.h"

namespace kirolane {

MusicForm::MusicForm() : Window("MusicForm", kMusicFormDesign) {}

void MusicForm::Layout() {
    SetMenuBar(*Menu::Instance());
}

void MusicForm::CreateControls() {
    Window::CreateControls(design::kMusicFormControls);
}

} // namespace kirolane
