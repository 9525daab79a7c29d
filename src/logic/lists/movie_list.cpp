#include "contract/keyboard.h"
#include "logic/lists/media_types.h"
#include "logic/shell/mainform.h"

namespace kirolane {

namespace {
constexpr Color kEvenRow = RGB(237, 243, 254);
constexpr Color kOddRow = RGB(255, 255, 255);
} // namespace

/// Stripes, through the blank rows too.
bool Mainform::StrGrid_CellBackgroundPaint(Graphics& g, std::int32_t row, std::int32_t /*column*/) {
    g.SetForeColor(row % 2 == 0 ? kEvenRow : kOddRow);
    g.FillRect(0, 0, g.Width(), g.Height());
    return false;
}

/// Left and right step one row beside the list's own up and down. The key's state counts, not the event's
/// key.
bool Mainform::StrGrid_KeyDown(const std::string& /*key*/) {
    const auto list = StrGrid();
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

/// A selection that a click has cleared comes back at one end.
void Mainform::StrGrid_Change() {
    const auto list = StrGrid();
    if (list->ListIndex() == -1)
        list->SetListIndex(list->ScrollPosition() == 0 ? 0 : list->ListCount() - 1);
}

void Mainform::StrGrid_DoubleClick() {
    StrGridDblClick_Action();
}

/// The list goes on from the row that was selected before the sort, whatever stands there afterwards.
bool Mainform::StrGrid_SortColumn(std::int32_t /*column*/) {
    File_Number = StrGrid()->ListIndex();
    return false;
}

void Mainform::StrGridDblClick_Action() {
    const auto list = StrGrid();
    if (list->Cell(0, 1).empty())
        return;
    GetListIndex_Flag = kMovieList;
    if (list->Cell(list->ListIndex(), 1).empty())
        list->SetListIndex(0); // a blank row stands for the first; the list advance wraps by this
    QTMPlay_Func();

    TakeNameTails(file->Name());
    if (const auto* type = FindByTail(kMovieTypes, MaxText_A, MaxText_B, MaxText_C))
        MediaType()->SetCaption(std::string(type->caption));
    const auto player = QTM();
    if (!player->Movie().IsNil())
        list->SetCell(list->ListIndex(), 2, MaxTime()->Caption());
    else
        list->SetCell(list->ListIndex(), 2, "  ???");
    File_Number = list->ListIndex();
    // A scan may run in between: rows, selection and movie are read afresh in every pass.
    for (std::int32_t k = 0; k <= list->ListCount() - 1; ++k) {
        list->SetCell(k, 0, "");
        if (!player->Movie().IsNil()) {
            list->SetCell(list->ListIndex(), 0, "●");
            Fold_Flag = false;
        }
        YieldToThreads();
    }
}

} // namespace kirolane
