#include "logic/shell/mainform.h"

#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform_controls.h"
#include "logic/shell/menu.h"

namespace kirolane {

namespace {
constexpr std::int32_t kPathScratch = 3;
} // namespace

Mainform::Mainform()
    : Window("Mainform", kMainformDesign), Setting_Data(line::kLast), f_all(kScanBound), f_box(kScanBound),
      UserPath_List(kPathScratch), mf_box(kScanBound), mf_all(kScanBound) {}

void Mainform::Layout() {
    SetMenuBar(*Menu::Instance());
}

void Mainform::CreateControls() {
    Window::CreateControls(design::kMainformControls);
    BindEvents();
}

void Mainform::BindEvents() {
    QTM()->OnPlay = [this] { QTM_Play(); };
    QTM()->OnStop = [this] { QTM_Stop(); };
    QTM_PosBar()->OnValueChanged = [this] { QTM_PosBar_ValueChanged(); };
    QTM_PosBar()->OnMouseDown = [this](auto x, auto y) { return QTM_PosBar_MouseDown(x, y); };
    QTM_PlayButton()->OnAction = [this] { QTM_PlayButton_Action(); };
    QTM_FrameFreeDownButton()->OnAction = [this] { QTM_FrameFreeDownButton_Action(); };
    QTM_FrameFreeUpButton()->OnAction = [this] { QTM_FrameFreeUpButton_Action(); };
    VolumeProgress()->OnMouseMove = [this](auto x, auto y) { VolumeProgress_MouseMove(x, y); };
    Rate()->OnValueChanged = [this] { Rate_ValueChanged(); };
    Rate()->OnMouseUp = [this](auto x, auto y) { Rate_MouseUp(x, y); };
    ListTab()->OnChange = [this] { ListTab_Change(); };

    for (std::int32_t n = 1; n <= kFolders; ++n) {
        Fold(n)->OnAction = [this, n] { Fold_Action(n); };
        mFold(n)->OnAction = [this, n] { mFold_Action(n); };
    }
    Fold(kChosenNumber)->OnAction = [this] { Fold99_Action(); };
    mFold(kChosenNumber)->OnAction = [this] { mFold99_Action(); };

    StrGrid()->OnCellBackgroundPaint = [this](Graphics& g, auto row, auto column) {
        return StrGrid_CellBackgroundPaint(g, row, column);
    };
    StrGrid()->OnKeyDown = [this](const std::string& key) { return StrGrid_KeyDown(key); };
    StrGrid()->OnChange = [this] { StrGrid_Change(); };
    StrGrid()->OnDoubleClick = [this] { StrGrid_DoubleClick(); };
    StrGrid()->OnSortColumn = [this](auto column) { return StrGrid_SortColumn(column); };
    mStrGrid()->OnCellBackgroundPaint = [this](Graphics& g, auto row, auto column) {
        return mStrGrid_CellBackgroundPaint(g, row, column);
    };
    mStrGrid()->OnKeyDown = [this](const std::string& key) { return mStrGrid_KeyDown(key); };
    mStrGrid()->OnChange = [this] { mStrGrid_Change(); };
    mStrGrid()->OnDoubleClick = [this] { mStrGrid_DoubleClick(); };
    mStrGrid()->OnSortColumn = [this](auto column) { return mStrGrid_SortColumn(column); };

    TimeTimer()->OnAction = [this] { TimeTimer_Action(); };
    FolderThread()->OnRun = [this] { return FolderThread_Run(); };
    mFolderThread()->OnRun = [this] { return mFolderThread_Run(); };
}

void Mainform::FocusList() {
    if (ListTab()->Value() == 0)
        StrGrid()->SetFocus();
    if (ListTab()->Value() == 1)
        mStrGrid()->SetFocus();
}

} // namespace kirolane
