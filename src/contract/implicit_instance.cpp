#include "contract/implicit_instance.h"

#include "contract/core/runtime.h"

namespace kirolane {

std::shared_ptr<Window> FindOrMakeForm(std::type_index type,
                                       const std::function<std::shared_ptr<Window>()>& make) {
    auto& forms = Runtime::Current().Forms();
    auto form = forms.Find(type);
    return form != nullptr ? form : forms.Make(type, make);
}

} // namespace kirolane
