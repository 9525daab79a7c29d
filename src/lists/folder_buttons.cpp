#include "shell/mainform.h"

namespace kirolane {

void Mainform::Fold_Action(std::int32_t /*number*/) {}
void Mainform::Fold99_Action() {}
void Mainform::mFold_Action(std::int32_t /*number*/) {}
void Mainform::mFold99_Action() {}
void Mainform::ListTab_Change() {}

} // namespace kirolane
