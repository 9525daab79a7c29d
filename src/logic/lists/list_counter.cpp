#include "logic/shell/mainform.h"

namespace kirolane {

// The flag tells the list last opened from, not the transport that calls: closing a movie after a sound was
// opened resets the sound list's label, and the reverse.

void Mainform::GetListIndex_Func() {
    if (GetListIndex_Flag == kMovieList)
        FileNumberLabel()->SetCaption(Str(File_Number + 1) + " / " + Str(File_Count));
    else if (GetListIndex_Flag == kSoundList)
        mFileNumberLabel()->SetCaption(Str(mFile_Number + 1) + " / " + Str(mFile_Count));
}

void Mainform::GetListIndexNull_Func() {
    if (GetListIndex_Flag == kMovieList)
        FileNumberLabel()->SetCaption(Str(File_Count));
    else if (GetListIndex_Flag == kSoundList)
        mFileNumberLabel()->SetCaption(Str(mFile_Count));
}

} // namespace kirolane
