#pragma once

#include "contract/ref.h"

#include <functional>
#include <memory>
#include <typeindex>

namespace kirolane {

class Window;

/// The open form of that class, made by `make` if there is none.
std::shared_ptr<Window> FindOrMakeForm(std::type_index type,
                                       const std::function<std::shared_ptr<Window>()>& make);

/// The open instance of a form class, made if there is none and shown if its design says visible. Merely
/// naming a form thus brings it into being; after a Close the next call makes it anew.
template <class Form> Ref<Form> Instance() {
    return Ref<Form>(std::static_pointer_cast<Form>(
        FindOrMakeForm(typeid(Form), [] { return std::make_shared<Form>(); })));
}

} // namespace kirolane
