#include "contract/keyboard.h"
#include "logic/lists/media_types.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

namespace {
constexpr Color kEvenRow = RGB(237, 243, 254);
constexpr Color kOddRow = RGB(255, 255, 255);
} // namespace

bool Mainform::mStrGrid_CellBackgroundPaint(Graphics& g, std::int32_t row, std::int32_t /*column*/) {
    g.SetForeColor(row % 2 == 0 ? kEvenRow : kOddRow);
    g.FillRect(0, 0, g.Width(), g.Height());
    return false;
}

bool Mainform::mStrGrid_KeyDown(const std::string& /*key*/) {
    const auto list = mStrGrid();
    if (list->ListCount() > -1) {
        if (Keyboard::AsyncKeyDown(Keyboard::kLeftArrow)) {
            if (list->ListIndex() > 0)
                list->SetListIndex(list->ListIndex() - 1);
        } else if (Keyboard::AsyncKeyDown(Keyboard::kRightArrow)) {
            if (list->ListIndex() < list->ListCount() - 1)
                list->SetListIndex(list->ListIndex() + 1);
        }
    }
    return false;
}

void Mainform::mStrGrid_Change() {
    const auto list = mStrGrid();
    if (list->ListIndex() == -1)
        list->SetListIndex(list->ScrollPosition() == 0 ? 0 : list->ListCount() - 1);
}

void Mainform::mStrGrid_DoubleClick() {
    mStrGridDblClick_Action();
}

bool Mainform::mStrGrid_SortColumn(std::int32_t /*column*/) {
    mFile_Number = mStrGrid()->ListIndex();
    return false;
}

void Mainform::mStrGridDblClick_Action() {
    const auto list = mStrGrid();
    if (list->Cell(0, 1).empty())
        return;
    GetListIndex_Flag = kSoundList;
    if (list->Cell(list->ListIndex(), 1).empty())
        list->SetListIndex(0); // a blank row stands for the first; the list advance wraps by this
    mQTMPlay_Func();

    const auto form = Instance<MusicForm>();
    TakeNameTails(mfile->Name());
    if (const auto* type = FindByTail(kSoundTypes, MaxText_A, MaxText_B, MaxText_C);
        type != nullptr && !type->caption.empty())
        form->MediaType()->SetCaption(std::string(type->caption));
    const auto player = form->QTM();
    if (!player->Movie().IsNil())
        list->SetCell(list->ListIndex(), 2, form->MaxTime()->Caption());
    else
        list->SetCell(list->ListIndex(), 2, "  ???");
    mFile_Number = list->ListIndex();
    // A scan may run in between: rows, selection and movie are read afresh in every pass.
    for (std::int32_t k = 0; k <= list->ListCount() - 1; ++k) {
        list->SetCell(k, 0, "");
        if (!player->Movie().IsNil()) {
            list->SetCell(list->ListIndex(), 0, "●");
            mFold_Flag = false;
        }
        YieldToThreads();
    }
    player->SetVisible(true);
    list->SetFocus();
}

} // namespace kirolane
