#include "contract/timer.h"

#include "contract/core/runtime.h"

namespace kirolane {

Timer::Timer(class Window& window, const ControlDesign& design) : Control(window, design) {
    if (Mode() == 2)
        m_peer = Runtime::Current().Windows().MakeTimer(*this);
}

Timer::~Timer() = default;

void Timer::ReportDue() {
    if (OnAction)
        Runtime::Current().DeliverNow(Window(), Path() + " Action", OnAction);
}

} // namespace kirolane
