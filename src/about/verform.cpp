#include "about/verform.h"

#include "about/verform_controls.h"
#include "platform/screen.h"
#include "shell/mainform.h"

namespace kirolane {

VerForm::VerForm() : Window("VerForm", kVerFormDesign) {}

void VerForm::CreateControls() {
    Window::CreateControls(design::kVerFormControls);
    OKButton()->OnAction = [this] { OKButton_Action(); };
}

void VerForm::Event_Open() {
    CentreOn(Screen(0));
}

void VerForm::OKButton_Action() {
    Hide();
}

void Mainform::VerFormShow_Action() {
    Instance<VerForm>()->Show();
}

} // namespace kirolane
