#pragma once

#include "contract/implicit_instance.h"
#include "logic/display/monitorform.h"
#include "logic/settings/settingform.h"
#include "logic/shell/mainform.h"
#include "logic/shell/start.h"
#include "logic/sound/musicform.h"
#include "support/contract_test.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kirolane::tests {

inline const std::string kMark = "●";
inline const std::string kFailed = "  ???";

/// The whole program on the headless back ends.
class LogicTest : public ContractTest {
protected:
    using Lines = std::map<int, std::string>;

    /// Makes a folder of files, one a name; names that end in "/" become folders. Its path in colon form.
    std::string MakeMedia(const std::string& folder, std::initializer_list<std::string_view> names);
    /// A folder of a movie and a sound of each name; its path in colon form.
    std::string MakeFiles(const std::string& folder, std::initializer_list<std::string> names);
    /// The same, of `count` files "1", "2" and so on.
    std::string MakeMany(const std::string& folder, int count);
    /// Writes a settings file of the default lines, changed here and there.
    void WriteSettings(const Lines& changed);
    /// The settings file as it lies on disc, "" if it is not there.
    [[nodiscard]] std::string SettingsText() const { return Folder().Read(kSettings); }

    /// Starts the program, with a native path or none, and lets its first scans end.
    void Start(const std::string& document = "");
    /// The same, with a folder of such files in both lists, and other lines changed.
    void StartWithFiles(std::initializer_list<std::string> names, Lines lines = {});
    /// Starts it and waits for nothing; why it did not start, "" if it did.
    std::string Launch(const std::string& document = "");
    /// Ends the program and readies for another start.
    void End();
    void SetScreens(int count, int height = 1200);

    static Mainform& Console() { return *Instance<Mainform>(); }
    static MonitorForm& Monitor() { return *Instance<MonitorForm>(); }
    static MusicForm& Sound() { return *Instance<MusicForm>(); }

    /// A key of the console's bar.
    void Choose(std::string_view item) { Console().ReportMenuChosen(item); }
    /// What must hold of both transports, whatever was done.
    static void ExpectWhole();
    /// A double click on a row of the movie list.
    void Open(std::int32_t row);
    /// The sound list's page in front, and a double click on a row of it.
    void OpenSound(std::int32_t row);
    /// Lists that folder in the movie or the sound list, by its first button.
    void BeginScan(const std::string& folder, bool sound);
    /// The same, and stops after so many items; Settle then goes on with it.
    void ScanUntil(const std::string& folder, std::int32_t matches, bool sound);
    /// Column 1 of the rows that are not blank.
    static std::vector<std::string> Names(const Ref<Listbox>& list);
    /// The rows that bear the mark.
    static std::vector<std::int32_t> Marked(const Ref<Listbox>& list);

    static constexpr const char* kSettings = "home/Library/Application Support/Kirolane/Setting/ES";

private:
    std::unique_ptr<App> m_app;
};

} // namespace kirolane::tests
