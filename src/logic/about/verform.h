#pragma once

#include "contract/canvas.h"
#include "contract/pushbutton.h"
#include "contract/statictext.h"
#include "contract/window.h"

namespace kirolane {

/// Logo, name, version and copyright of the program. Made at start and hidden; shown and hidden from then on.
class VerForm : public Window {
public:
    VerForm();

    Ref<PushButton> OKButton() const { return Control<PushButton>("OKButton"); }

    void CreateControls() override;

    /// Centres the window on the first display.
    void Event_Open() override;
    void OKButton_Action();
};

} // namespace kirolane
