#include "contract/folder_reading.h"
#include "logic/lists/media_types.h"
#include "logic/settings/setting_lines.h"
#include "logic/shell/mainform.h"

namespace kirolane {

void Mainform::TakeNameTails(std::string_view name) {
    MaxText_A = NameTail(name, 4);
    MaxText_B = NameTail(name, 5);
    MaxText_C = NameTail(name, 3);
}

/// Lists one folder, one level deep, by file extension. Everything may happen between two items: a row
/// opened, the selection moved, the rows sorted. A scan that is killed leaves its part; the next one starts
/// afresh. Rows and folder belong together: a scan that finds no folder leaves both, and fails.
Task Mainform::FolderThread_Run() {
    const auto list = StrGrid();
    const auto countLabel = FileNumberLabel();
    const auto player = QTM();

    Fold_Flag = true;
    FolderReading reading; // kept to the end: the items answer from one reading of the folder
    Ref<FolderItem> found = folder;
    if (const std::int32_t n = FolderLine(FoldNumber); n != 0) {
        FolderReading read = co_await ReadFolder(Setting_Data(n));
        reading = std::move(read);
        found = reading.folder;
    }
    if (found.IsNil())
        CountLabel()->SetVisible(false); // of a scan that this one has cut short
    const std::string path = found->AbsolutePath();
    const std::int32_t items = found->Count();
    for (std::int32_t k = 0; k <= kScanBound; ++k) {
        f_all.Set(k, {});
        f_box.Set(k, {});
        co_await Yield();
    }
    // Between the same two yields: a row is opened by the folder, whenever that may be.
    folder = found;
    Current_Folder = path;
    DirLabel()->SetCaption(path);
    list->DeleteAllRows();
    CountLabel()->SetVisible(true);

    std::int32_t matches = 0;
    for (std::int32_t i = 1; i <= items; ++i) {
        f_all.Set(i, folder->Item(i)->Name());
        file = GetFolderItem(Current_Folder)->Child(f_all(i));
        if (!file->Directory()) {
            TakeNameTails(file->Name());
            if (FindByTail(kMovieTypes, MaxText_A, MaxText_B, MaxText_C) != nullptr) {
                ++matches;
                f_box.Set(matches - 1, f_all(i));
                list->AddRow("");
                list->SetCell(matches - 1, 1, f_box(matches - 1));
                if (Fold_Flag && f_box(matches - 1) == Document)
                    list->SetListIndex(matches - 1);
            }
        }
        list->SetScrollBarVertical(true);
        countLabel->SetText(Str(matches));
        if (!Fold_Flag && !player->Movie().IsNil() && Equals(folder->AbsolutePath(), Current_Dir))
            countLabel->SetText(Str(File_Number + 1) + " / " + Str(matches));
        if (list->ListIndex() == -1 && File_Count != 0) // the count is still the one before this item
            list->SetListIndex(0);
        File_Count = matches;
        co_await Yield();
    }
    CountLabel()->SetVisible(false);
    for (std::int32_t k = list->ListCount() + 1; k <= kBlankRows; ++k) {
        list->AddRow("");
        co_await Yield();
    }
    list->SetScrollBarVertical(true);
    list->SetFocus();
}

} // namespace kirolane
