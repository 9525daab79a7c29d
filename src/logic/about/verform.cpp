#include "logic/about/verform.h"

#include "contract/screen.h"
#include "logic/about/verform_controls.h"
#include "logic/shell/mainform.h"

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
