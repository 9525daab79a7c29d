#pragma once

#include "contract/bevelbutton.h"
#include "contract/canvas.h"
#include "contract/folderitem.h"
#include "contract/graphics.h"
#include "contract/implicit_instance.h"
#include "contract/listbox.h"
#include "contract/menuitem.h"
#include "contract/movieplayer.h"
#include "contract/progressbar.h"
#include "contract/rectangle.h"
#include "contract/ref.h"
#include "contract/slider.h"
#include "contract/statictext.h"
#include "contract/stringarray.h"
#include "contract/tabpanel.h"
#include "contract/task.h"
#include "contract/text.h"
#include "contract/thread.h"
#include "contract/timer.h"
#include "contract/window.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kirolane {

/// The console window, and at the same time the whole state record of the program: both transports, both
/// lists and the settings live here as plain fields, and every command is a method. The other forms forward
/// to it. This header is the map; each section of methods is headed by the file that implements it.
///
/// Names: a leading `m` marks the sound transport's twin of a video name. `_Action` is a complete command,
/// `_Func` a step that commands call; none of them takes an argument or returns anything. A control's event
/// is handled by <Control>_<Event>, the window's own by Event_<Event>; which command a menu item runs stands
/// in its row of logic/shell/menu_table.h. Lengths of time are seconds. All code runs on the main flow, and
/// between two yields it runs alone.
class Mainform : public Window {
public:
    static constexpr std::int32_t kBlankRows = 26;    ///< every list is filled with blank rows to this count
    static constexpr std::int32_t kScanBound = 99999; ///< items of any kind that a folder in a list may hold

    /// Makes the arrays; everything else follows in Event_Open.
    Mainform();

    // ---- The record, in its fixed order. "By" names the writers; an `m` field is written by the `m` methods
    // ---- of the same names. Sound fields that have a video twin are explained there.

    /// Lines 1 to 200 of the settings file, element n is line n; element 0 is not used. By LoadSettings,
    /// DefaultSettingLoad_Func, ApplySettings, the two `?` buttons, SettingForm.
    StringArray Setting_Data;
    /// Path prefix of the program's own files: the home folder's path with its colon. By Event_Open.
    std::string VolumeName;
    /// Folder button in force: 1 to 10, 99 for `?`, 0 for none; the scan reads it. By ApplySettings, the
    /// folder buttons.
    std::int32_t FoldNumber = 0;
    bool altx = false; ///< idle
    /// The monitor player's volume, 0 to 256, held while muted. By Mute_Func.
    std::int32_t Current_QTM_Volume = 0;
    /// Media rows in the list; blank rows do not count. By FolderThread_Run.
    std::int32_t File_Count = 0;
    std::int32_t File_Now = 0; ///< idle
    /// Zero-based list row that counts as the current file's. By QTMPlay_Func, StrGridDblClick_Action,
    /// QTM_TImeLoop_Func, StrGrid_SortColumn.
    std::int32_t File_Number = 0;
    /// Marked position in whole seconds. By QTM_Mark_Action, QTM_Close_Action.
    std::int32_t Mark_Pos = 0;
    std::int32_t QTM_Pos = 0;     ///< idle
    std::int32_t MovieSize_X = 0; ///< idle
    std::int32_t MovieSize_Y = 0; ///< idle
    /// The transport regards the movie as playing. By QTMPlay_Func, QTM_Close_Action, QTM_TImeLoop_Func and
    /// the commands and events of logic/video/transport.cpp.
    bool Play_Flag = false;
    /// A press on the position slider is pending: tells a person's move of it from the tick's. By
    /// QTM_PosBar_MouseDown, QTM_PosBar_ValueChanged.
    bool PosBar_Flag = false;
    /// The movie's duration in seconds, as read. By QTM_MaxTime_Func.
    double QTM_DumpMax = 0.0;
    /// The same in whole seconds, never above the true length: the end of the movie is tested against it. By
    /// QTM_MaxTime_Func.
    std::int32_t QTM_Max = 0;
    std::int32_t Scroll_Flag = 0; ///< idle
    /// A movie is open. By QTMPlay_Func, QTM_Close_Action.
    bool FileOpen_Flag = false;
    /// Path of the folder in the list; a row's file is its Child of the row's name. By FolderThread_Run.
    std::string Current_Folder;
    /// At the end of a movie go on to the next row. By ListLoopPlay_Action, LoopPlay_Action.
    bool List_Flag = false;
    /// The folder being listed. By FolderThread_Run.
    Ref<FolderItem> folder;
    /// The file looked at last; after an open the open file. By FolderThread_Run, QTMPlay_Func.
    Ref<FolderItem> file;
    /// The last 4, 5 and 3 characters of a file name; good until the next yield, both lists write them. By
    /// TakeNameTails.
    std::string MaxText_A;
    std::string MaxText_B;
    std::string MaxText_C;
    /// Repeat the one movie. By LoopPlay_Action, ListLoopPlay_Action.
    bool Loop_Flag = false;
    /// Muted. By Mute_Func.
    bool Mute_Flag = false;
    /// Level of volume, 0 to 100. By Event_Open, VolumeUp_Action, VolumeDown_Action,
    /// VolumeProgress_MouseMove.
    std::int32_t Volume_Flag = 0;
    /// Path of `folder` when the open movie was opened. By QTMPlay_Func.
    std::string Current_Dir;
    StringArray f_all; ///< names of all items of the folder, from index 1. By FolderThread_Run.
    StringArray f_box; ///< names that matched, from index 0. By FolderThread_Run.
    /// The list was rebuilt and nothing in it has been opened since. By FolderThread_Run,
    /// StrGridDblClick_Action.
    bool Fold_Flag = false;
    /// Scratch of finding VolumeName: 1 the desktop's path, 2 a position as text, 3 the prefix. By
    /// Event_Open.
    StringArray UserPath_List;
    /// The console is hidden behind the monitor window. By AltX_Action.
    bool AltX_Flag = false;
    /// A mark is set. By QTM_Mark_Action, QTM_Close_Action.
    bool Mark_Flag = false;
    /// The preferences window has been shown at least once. By SettingFormShow_Action.
    bool SettingForm_Flag = false;
    std::int32_t mFoldNumber = 0;
    bool mFold_Flag = false;
    StringArray mf_box;
    StringArray mf_all;
    std::int32_t mFile_Count = 0;
    std::string mCurrent_Folder;
    double mQTM_DumpMax = 0.0;
    bool mPlay_Flag = false;
    bool mFileOpen_Flag = false;
    std::int32_t mFile_Number = 0;
    bool mList_Flag = false;
    bool mLoop_Flag = false;
    bool mMute_Flag = false;
    std::string mCurrent_Dir;
    std::int32_t mMark_Pos = 0;
    std::int32_t mQTM_Max = 0;
    std::int32_t mVolume_Flag = 0; ///< also by MusicForm
    std::int32_t mCurrent_QTM_Volume = 0;
    bool mMark_Flag = false;
    bool mPosBar_Flag = false; ///< by MusicForm
    /// A sound is open; nothing tests it. By mQTMPlay_Func, mQTM_Close_Action.
    bool MusicForm_Flag = false;
    Ref<FolderItem> mfolder;
    Ref<FolderItem> mfile;
    static constexpr std::int32_t kMovieList = 0;
    static constexpr std::int32_t kSoundList = 1;
    /// Whose counter label the shared label routines write. By the two double-click actions and the two
    /// end-of-file tests.
    std::int32_t GetListIndex_Flag = kMovieList;
    /// The folder last picked by the `?` button. By Fold99_Action.
    Ref<FolderItem> Sfolder;
    Ref<FolderItem> mSfolder;
    /// Name of the file that the program was started with, until the list has it. By ListDocument,
    /// FolderThread_Run, Fold_Action.
    std::string Document;
    std::string mDocument;
    /// Factor applied at every start of play. By Event_Open, Rate_ValueChanged, Rate_MouseUp.
    double Rate_Flag = 0.0;
    std::int32_t SeekPos = 0;    ///< idle
    double mRate_Flag = 0.0;     ///< by Event_Open, MusicForm
    bool mSeekLoop_flag = false; ///< switch of a hook in the tick; only ever cleared. By mQTM_Close_Action.
    std::int32_t mSeekPos = 0;   ///< where that hook measures from; nothing writes it
    bool FirstShow_Flag = false; ///< idle

    // ---- Controls, found by name at each use; nil if there is none of that name.

    Ref<MoviePlayer> QTM() const { return Control<MoviePlayer>("QTM"); }
    Ref<Slider> QTM_PosBar() const { return Control<Slider>("QTM_PosBar"); }
    Ref<StaticText> MonitorPosTime() const { return Control<StaticText>("MonitorPosTime"); }
    Ref<StaticText> MaxTime() const { return Control<StaticText>("MaxTime"); }
    Ref<StaticText> PlayModeLabel() const { return Control<StaticText>("PlayModeLabel"); }
    Ref<StaticText> MediaType() const { return Control<StaticText>("MediaType"); }
    Ref<StaticText> MovieSize() const { return Control<StaticText>("MovieSize"); }
    Ref<StaticText> VolumeLabel() const { return Control<StaticText>("VolumeLabel"); }
    Ref<BevelButton> QTM_PlayButton() const { return Control<BevelButton>("QTM_PlayButton"); }
    Ref<BevelButton> QTM_FrameFreeDownButton() const {
        return Control<BevelButton>("QTM_FrameFreeDownButton");
    }
    Ref<BevelButton> QTM_FrameFreeUpButton() const { return Control<BevelButton>("QTM_FrameFreeUpButton"); }
    Ref<StaticText> RateText() const { return Control<StaticText>("RateText"); }
    Ref<Slider> Rate() const { return Control<Slider>("Rate"); }
    Ref<ProgressBar> VolumeProgress() const { return Control<ProgressBar>("VolumeProgress"); }
    Ref<TabPanel> ListTab() const { return Control<TabPanel>("ListTab"); }
    Ref<Listbox> StrGrid() const { return Control<Listbox>("StrGrid"); }
    Ref<Listbox> mStrGrid() const { return Control<Listbox>("mStrGrid"); }
    Ref<StaticText> DirLabel() const { return Control<StaticText>("DirLabel"); }
    Ref<StaticText> mDirLabel() const { return Control<StaticText>("mDirLabel"); }
    Ref<StaticText> LoopLabel() const { return Control<StaticText>("LoopLabel"); }
    Ref<StaticText> mLoopLabel() const { return Control<StaticText>("mLoopLabel"); }
    Ref<StaticText> CountLabel() const { return Control<StaticText>("CountLabel"); }
    Ref<StaticText> mCountLabel() const { return Control<StaticText>("mCountLabel"); }
    Ref<StaticText> FileNumberLabel() const { return Control<StaticText>("FileNumberLabel"); }
    Ref<StaticText> mFileNumberLabel() const { return Control<StaticText>("mFileNumberLabel"); }
    /// Fold1 to Fold10 and Fold99.
    Ref<BevelButton> Fold(std::int32_t n) const { return Control<BevelButton>("Fold" + Str(n)); }
    Ref<BevelButton> mFold(std::int32_t n) const { return Control<BevelButton>("mFold" + Str(n)); }
    Ref<Rectangle> DummyBack() const { return Control<Rectangle>("DummyBack"); }
    Ref<Canvas> DummyQTM() const { return Control<Canvas>("DummyQTM"); }
    Ref<StaticText> FileLabel() const { return Control<StaticText>("FileLabel"); }
    Ref<StaticText> PosTIme() const { return Control<StaticText>("PosTIme"); } // sic
    Ref<StaticText> TimingLabel() const { return Control<StaticText>("TimingLabel"); }
    Ref<Timer> TimeTimer() const { return Control<Timer>("TimeTimer"); }
    Ref<Thread> FolderThread() const { return Control<Thread>("FolderThread"); }
    Ref<Thread> mFolderThread() const { return Control<Thread>("mFolderThread"); }
    Ref<class MenuItem> AltX_Key() const { return MenuItem("AltX_Key"); }

    // ---- logic/shell/mainform.cpp
    // Making of the window: design values, controls, and which event reaches which handler.

    void Layout() override;
    void CreateControls() override;
    void BindEvents();
    /// The keyboard goes to the list of the page in front.
    void FocusList();

    // ---- logic/shell/mainform_open.cpp
    // From the making of the window to the idle state, and the end of the program.

    void Event_Open() override;
    void Event_Close() override;
    void SetUpLists();
    void SetUpRates();
    void FillWithBlankRows(const Ref<Listbox>& list);
    void PlaceCurtain();
    void FindVolumeName();

    // ---- logic/shell/keys.cpp
    // The menu bar's commands, bound row by row (menu_table.h), and the one that both lists share.

    void AddMenuHandlers() override;
    void OpenKey_Action();

    // ---- logic/settings/settings_file.cpp
    // The settings file: its default content, reading it at start, writing it whole.

    Ref<FolderItem> SettingsItem() const;
    void DefaultSettingLoad_Func();
    void LoadSettings();
    void WriteSettings();

    // ---- logic/settings/apply_settings.cpp
    // What the settings do at start: windows, colour, folders, first scans, tool tips.

    void ApplySettings();
    void PlaceWindows();
    void ApplyWindowColor();
    /// A folder line that leads nowhere becomes the application's own folder, in memory.
    void CheckFolderLines();
    void StartFirstScans();
    void ShowFolderTips();

    // ---- logic/settings/settingform.cpp
    // The preferences window; its command on the console.

    void SettingFormShow_Action();

    // ---- logic/display/placement.cpp
    // Where the monitor window stands and how large its player is.

    void PlaceOnSecondScreen();
    void PlaceOnFirstScreen();
    void PlaceBelowConsole();
    /// Puts the windowed monitor directly under the console.
    void FollowConsole();
    void SizePlayers();

    // ---- logic/display/console_window.cpp
    // Hiding the console during a show, and the window events.

    void AltX_Action();
    void Event_Moved() override;
    void Event_Activate() override;
    void Event_Deactivate() override;
    void Event_Restore() override;

    // ---- logic/lists/folder_scan.cpp
    // The movie list's scan, a cooperative thread.

    Task FolderThread_Run();
    /// Writes the last characters of a file name to MaxText_A, MaxText_B and MaxText_C.
    void TakeNameTails(std::string_view name);

    // ---- logic/lists/sound_folder_scan.cpp
    // The sound list's scan.

    Task mFolderThread_Run();

    // ---- logic/lists/movie_list.cpp
    // The movie list with rows in it: painting, keys, selection, sort, the way from a row to an open movie.

    bool StrGrid_CellBackgroundPaint(Graphics& g, std::int32_t row, std::int32_t column);
    bool StrGrid_KeyDown(const std::string& key);
    void StrGrid_Change();
    void StrGrid_DoubleClick();
    bool StrGrid_SortColumn(std::int32_t column);
    void StrGridDblClick_Action();

    // ---- logic/lists/sound_list.cpp
    // The same for the sound list.

    bool mStrGrid_CellBackgroundPaint(Graphics& g, std::int32_t row, std::int32_t column);
    bool mStrGrid_KeyDown(const std::string& key);
    void mStrGrid_Change();
    void mStrGrid_DoubleClick();
    bool mStrGrid_SortColumn(std::int32_t column);
    void mStrGridDblClick_Action();

    // ---- logic/lists/list_counter.cpp
    // The counter label under the list that GetListIndex_Flag names.

    void GetListIndex_Func();
    void GetListIndexNull_Func();

    // ---- logic/lists/folder_buttons.cpp
    // The folder buttons under both lists, and the tabs.

    /// Fold1_Action to Fold10_Action, told by their number.
    void Fold_Action(std::int32_t number);
    void Fold99_Action();
    void ListChosen();
    void mFold_Action(std::int32_t number);
    void mFold99_Action();
    void mListChosen();
    /// What the program was started with: a folder, or a file in it where `name` is not empty.
    void ListDocument(const Ref<FolderItem>& chosen, const std::string& name);
    void PressFolderButton(std::int32_t number);
    void mPressFolderButton(std::int32_t number);
    void ListTab_Change();

    // ---- logic/video/open_close.cpp
    // Opening the selected row in both players, and going back to the curtain.

    void QTMPlay_Func();
    void QTM_Close_Action();

    // ---- logic/video/transport.cpp
    // Play, pause and stop of the twin players, console first, and the console player's own events.

    void QTM_PlayButton_Action();
    void QTM_PlayStatus_Action();
    void QTM_Play_Action();
    void QTM_Pause_Action();
    void QTM_Stop_Action();
    void QTM_Play();
    void QTM_Stop();

    // ---- logic/video/tick.cpp
    // The once-a-second clock of both transports, the movie's read-outs and its length.

    void TimeTimer_Action();
    void QTM_PosTime_Func();
    void QTM_MaxTime_Func();
    void QTM_ScreenOut_Func();

    // ---- logic/video/end_of_movie.cpp
    // What happens when a movie has run out, and the two toggles that choose it.

    void QTM_TImeLoop_Func(); // sic
    /// The list advance: opens the row after the current one.
    void PlayNextRow();
    void LoopPlay_Action();
    void ListLoopPlay_Action();

    // ---- logic/video/seeking.cpp
    // Relative seeks, the mark, the position slider.

    void QTM_Frame5Down_Action();
    void QTM_Frame5Up_Action();
    void QTM_Frame30Down_Action();
    void QTM_Frame30Up_Action();
    void QTM_FrameFreeDown_Action();
    void QTM_FrameFreeUp_Action();
    void QTM_FrameFreeDownButton_Action();
    void QTM_FrameFreeUpButton_Action();
    void QTM_Mark_Action();
    void QTM_MarkSeek_Action();
    bool QTM_PosBar_MouseDown(std::int32_t x, std::int32_t y);
    void QTM_PosBar_ValueChanged();
    void SeekBy(double seconds);

    // ---- logic/video/rate.cpp
    // The eleven speeds of the twin players.

    void Rate_ValueChanged();
    void Rate_MouseUp(std::int32_t x, std::int32_t y);
    void SpeedUp_Action();
    void SpeedDown_Action();
    void ApplyRate();

    // ---- logic/video/volume.cpp
    // The level of the movie's sound, and mute.

    void VolumeSave_Func();
    void VolumeUp_Action();
    void VolumeDown_Action();
    void Mute_Func();
    void VolumeProgress_MouseMove(std::int32_t x, std::int32_t y);

    // ---- logic/video/timing.cpp
    // The drift between the twin players.

    void QTM_Timing_Func();

    // ---- logic/sound/open_close.cpp
    // Opening the selected row of the sound list, and closing it.

    void mQTMPlay_Func();
    void mQTM_Close_Action();

    // ---- logic/sound/transport.cpp
    // Play, pause and stop of the sound player.

    void mQTM_PlayStatus_Action();
    void mQTM_Play_Action();
    void mQTM_Pause_Action();
    void mQTM_Stop_Action();

    // ---- logic/sound/tick.cpp
    // The sound's read-outs and its length.

    void mQTM_PosTime_Func();
    void mQTM_MaxTime_Func();
    void mQTM_ScreenOut_Func();

    // ---- logic/sound/end_of_sound.cpp
    // What happens when a sound has run out, and the two toggles that choose it.

    void mQTM_TImeLoop_Func(); // sic
    void mPlayNextRow();
    void mLoopPlay_Action();
    void mListLoopPlay_Action();

    // ---- logic/sound/seeking.cpp
    // Relative seeks and the mark.

    void mQTM_Frame5Down_Action();
    void mQTM_Frame5Up_Action();
    void mQTM_Frame30Down_Action();
    void mQTM_Frame30Up_Action();
    void mQTM_FrameFreeDown_Action();
    void mQTM_FrameFreeUp_Action();
    void mQTM_Mark_Action();
    void mQTM_MarkSeek_Action();
    void mSeekBy(double seconds);

    // ---- logic/sound/rate.cpp
    // The two commands that step the sound window's rate slider.

    void mSpeedUp_Action();
    void mSpeedDown_Action();

    // ---- logic/sound/volume.cpp
    // The level of the sound, and mute.

    void mVolumeSave_Func();
    void mVolumeUp_Action();
    void mVolumeDown_Action();
    void mMute_Func();

    // ---- logic/about/verform.cpp
    // The about window's command on the console.

    void VerFormShow_Action();
};

} // namespace kirolane
