#include "logic_test.h"

#include "contract/backend/host.h"
#include "contract/core/colon_path.h"
#include "logic/settings/setting_lines.h"

#include <chrono>

namespace kirolane::tests {

std::string LogicTest::MakeMedia(const std::string& folder, std::initializer_list<std::string_view> names) {
    const std::string path = Folder().MakeFolder(folder);
    for (const std::string_view name : names) {
        if (name.ends_with("/"))
            static_cast<void>(Folder().MakeFolder(folder + "/" + std::string(name)));
        else
            static_cast<void>(Folder().Write(folder + "/" + std::string(name), ""));
    }
    return ToColonPath(path, true);
}

std::string LogicTest::MakeFiles(const std::string& folder, std::initializer_list<std::string> names) {
    for (const std::string& name : names)
        MakeMedia(folder, {name + ".mov", name + ".wav"});
    return MakeMedia(folder, {});
}

std::string LogicTest::MakeMany(const std::string& folder, int count) {
    for (int n = 1; n <= count; ++n)
        MakeFiles(folder, {std::to_string(n)});
    return MakeMedia(folder, {});
}

void LogicTest::WriteSettings(const Lines& changed) {
    const std::string own = ToColonPath(Folder().Path("application"), true);
    std::string text;
    for (const SettingLines& some : kSettingLines)
        for (std::int32_t n = some.first; n <= some.last; ++n) {
            const std::string initial(some.kind == LineKind::Folder ? own : some.initial);
            text += (changed.contains(n) ? changed.at(n) : initial) + "\n";
        }
    static_cast<void>(Folder().MakeFolder("home/Library/Application Support/Kirolane/Setting"));
    static_cast<void>(Folder().Write(kSettings, text));
}

std::string LogicTest::Launch(const std::string& document) {
    std::string failure;
    const auto start = [&] {
        m_app = StartKirolane();
        if (!document.empty())
            host::OpenDocument(document);
    };
    const bool started = TheRuntime().Start(start, failure);
    EXPECT_EQ(started, failure.empty());
    return failure;
}

void LogicTest::Start(const std::string& document) {
    EXPECT_EQ(Launch(document), "");
    Settle();
}

void LogicTest::StartWithFiles(std::initializer_list<std::string> names, Lines lines) {
    lines[22] = lines[33] = MakeFiles("media", names);
    WriteSettings(lines);
    Start();
}

void LogicTest::End() {
    m_app.reset();
    Restart();
}

void LogicTest::SetScreens(int count, int height) {
    std::vector<Rect> screens = {{0, 0, 1600, height}};
    if (count > 1)
        screens.push_back({1600, 100, 1920, 1080});
    Windows().SetScreens(screens);
}

void LogicTest::Open(std::int32_t row) {
    Console().StrGrid()->ReportSelection(row);
    Console().StrGrid()->ReportDoubleClick();
}

void LogicTest::OpenSound(std::int32_t row) {
    Console().ListTab()->ReportPage(1);
    Console().mStrGrid()->ReportSelection(row);
    Console().mStrGrid()->ReportDoubleClick();
}

void LogicTest::ExpectWhole() {
    const Mainform& console = Console();
    const auto& twin = Monitor().QTM();
    const bool open = !console.QTM()->Movie().IsNil();
    const auto expect = [](const Window& form, bool fileOpen, bool plays) {
        const auto& player = form.Control<MoviePlayer>("QTM");
        const bool isOpen = !player->Movie().IsNil();
        EXPECT_EQ(fileOpen, isOpen);
        EXPECT_EQ(player->Running(), plays);
        for (const char* button : {"QTM_PlayButton", "QTM_FrameFreeDownButton", "QTM_FrameFreeUpButton"})
            EXPECT_EQ(form.Control<BevelButton>(button)->Enabled(), isOpen) << form.Name() << button;
        EXPECT_EQ(form.Control<Slider>("QTM_PosBar")->Enabled(), isOpen) << form.Name();
        const std::string mode = form.Control<StaticText>("PlayModeLabel")->Caption();
        EXPECT_TRUE(plays    ? mode == "再生中"
                    : isOpen ? mode == "一時停止" || mode == "停止"
                             : mode.empty())
            << form.Name() << mode;
    };
    expect(console, console.FileOpen_Flag, console.Play_Flag);
    expect(Sound(), console.mFileOpen_Flag, console.mPlay_Flag);
    EXPECT_EQ(twin->Movie().IsNil(), !open);
    EXPECT_EQ(twin->Running(), console.QTM()->Running());
    for (const auto& player : {console.QTM(), twin})
        EXPECT_EQ(player->Visible(), open);
    for (const auto& curtain : {console.DummyBack(), Monitor().DummyBack()})
        EXPECT_EQ(curtain->Visible(), !open);
    for (const auto& logo : {console.DummyQTM(), Monitor().DummyQTM()})
        EXPECT_EQ(logo->Visible(), !open);
    EXPECT_TRUE(console.FileOpen_Flag || !console.Mark_Flag);
    EXPECT_TRUE(console.mFileOpen_Flag || !console.mMark_Flag);
    EXPECT_FALSE(console.Loop_Flag && console.List_Flag);
    EXPECT_FALSE(console.mLoop_Flag && console.mList_Flag);
    EXPECT_EQ(console.VolumeLabel()->Enabled(), !console.Mute_Flag);
    EXPECT_TRUE(!console.Mute_Flag || twin->Volume() == 0);
    EXPECT_TRUE(!open || console.QTM()->Volume() == 0) << "the preview is silent";
    EXPECT_LE(Marked(console.StrGrid()).size(), 1U);
    EXPECT_LE(Marked(console.mStrGrid()).size(), 1U);
}

void LogicTest::BeginScan(const std::string& folder, bool sound) {
    Do([&] { Console().Setting_Data.Set(sound ? 33 : 22, folder); });
    (sound ? Console().mFold(1) : Console().Fold(1))->ReportClick();
}

void LogicTest::ScanUntil(const std::string& folder, std::int32_t matches, bool sound) {
    std::int32_t& count = sound ? Console().mFile_Count : Console().File_Count;
    count = 0;
    BeginScan(folder, sound);
    // Turn by turn instead of by slices, so that the place where it stops is certain.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (count < matches && std::chrono::steady_clock::now() < deadline) {
        TheRuntime().RunPosted(); // what the worker that reads the folder has to say
        TheRuntime().Threads().OneTurnEach();
    }
    ASSERT_EQ(count, matches);
}

std::vector<std::string> LogicTest::Names(const Ref<Listbox>& list) {
    std::vector<std::string> names;
    for (std::int32_t row = 0; row < list->ListCount(); ++row)
        if (!list->Cell(row, 1).empty())
            names.push_back(list->Cell(row, 1));
    return names;
}

std::vector<std::int32_t> LogicTest::Marked(const Ref<Listbox>& list) {
    std::vector<std::int32_t> rows;
    for (std::int32_t row = 0; row < list->ListCount(); ++row)
        if (list->Cell(row, 0) == kMark)
            rows.push_back(row);
    return rows;
}

} // namespace kirolane::tests
