#pragma once

#include "platform/common/runtime.h"
#include "platform/ref.h"

#include <typeindex>

namespace kirolane {

/// The open instance of a form class, made if there is none and shown if its design says visible. Merely
/// naming a form thus brings it into being; after a Close the next call makes it anew.
template <class Form> Ref<Form> Instance() {
    auto& runtime = Runtime::Current();
    auto form = runtime.FindForm(typeid(Form));
    if (form == nullptr)
        form = runtime.MakeForm(typeid(Form), [] { return std::make_shared<Form>(); });
    return Ref<Form>(std::static_pointer_cast<Form>(form));
}

} // namespace kirolane
