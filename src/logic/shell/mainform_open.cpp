#include "contract/application.h"
#include "contract/numbers.h"
#include "logic/about/verform.h"
#include "logic/display/monitorform.h"
#include "logic/shell/mainform.h"
#include "logic/sound/musicform.h"

namespace kirolane {

namespace {
constexpr std::int32_t kStartVolume = 80;
constexpr double kNormalRate = 1.0;
} // namespace

// The order of the steps is the design: forms come into being by being named, and what is shown last stands
// in front.
void Mainform::Event_Open() {
    SetUpLists();
    Volume_Flag = kStartVolume;
    mVolume_Flag = kStartVolume;
    SetUpRates();
    Instance<MusicForm>()->Hide();
    FillWithBlankRows(StrGrid());
    FillWithBlankRows(mStrGrid());
    PlaceCurtain();
    FindVolumeName();
    SetTitle("Kirolane");
    Instance<VerForm>()->Hide();
    LoadSettings();
    ApplySettings();
}

void Mainform::Event_Close() {
    Quit(0);
}

void Mainform::SetUpLists() {
    for (const auto& list : {StrGrid(), mStrGrid()}) {
        list->SetHeading(0, " ");
        list->SetHeading(1, "ファイル名");
        list->SetHeading(2, "時間");
    }
    for (const auto& list : {StrGrid(), mStrGrid()})
        for (std::int32_t column = 0; column <= 2; ++column)
            list->SetColumnSortDirection(column, 0);
}

void Mainform::SetUpRates() {
    QTM()->SetRate(kNormalRate);
    Instance<MonitorForm>()->QTM()->SetRate(kNormalRate);
    Instance<MusicForm>()->QTM()->SetRate(kNormalRate);
    Rate_Flag = kNormalRate;
    mRate_Flag = kNormalRate;
}

/// A list without media shows blank rows; an empty name in row 0 is how everything else knows that.
void Mainform::FillWithBlankRows(const Ref<Listbox>& list) {
    for (std::int32_t k = list->ListCount() + 1; k <= kBlankRows; ++k) {
        list->AddRow("");
        YieldToThreads();
    }
}

/// Half its own size below and beside the corner of the black ground centres the picture only because it is
/// half as large as the ground.
void Mainform::PlaceCurtain() {
    const auto back = DummyBack();
    const auto picture = DummyQTM();
    back->SetTop(QTM()->Top());
    back->SetLeft(QTM()->Left());
    picture->SetTop(ToInteger(back->Top() + picture->Height() / 2.0));
    picture->SetLeft(ToInteger(back->Left() + picture->Width() / 2.0));
}

/// The home folder is the part of the desktop's path ahead of ":Desktop", and keeps the colon.
void Mainform::FindVolumeName() {
    UserPath_List.Set(1, DesktopFolder()->AbsolutePath());
    UserPath_List.Set(2, Str(InStr(UserPath_List(1), ":Desktop")));
    UserPath_List.Set(3, kirolane::Left(UserPath_List(1), ToInteger(CDbl(UserPath_List(2)))));
    VolumeName = UserPath_List(3);
}

} // namespace kirolane
