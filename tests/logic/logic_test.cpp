#include "logic_test.h"

#include "contract/core/colon_path.h"

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

void LogicTest::WriteSettings(const Lines& changed) {
    std::vector<std::string> lines(201, "nil");
    const std::string own = ToColonPath(Folder().Path("application"), true);
    for (int n = 22; n <= 42; ++n)
        lines[static_cast<std::size_t>(n)] = own;
    const Lines initial = {{1, "// DisplayMode"},
                           {2, "true"},
                           {4, "false"},
                           {6, "false"},
                           {8, "false"},
                           {12, "3"},
                           {14, "3"},
                           {16, "1"},
                           {18, "1"}};
    for (const Lines& some : {initial, changed})
        for (const auto& [n, text] : some)
            lines[static_cast<std::size_t>(n)] = text;
    std::string text;
    for (std::size_t n = 1; n <= 200; ++n)
        text += lines[n] + "\n";
    static_cast<void>(Folder().MakeFolder("home/Library/Application Support/Kirolane/Setting"));
    static_cast<void>(Folder().Write(kSettings, text));
}

void LogicTest::Start() {
    std::string failure;
    EXPECT_TRUE(TheRuntime().Start([this] { m_app = StartKirolane(); }, failure)) << failure;
    Settle();
}

void LogicTest::StartWithMedia(std::initializer_list<std::string_view> movies,
                               std::initializer_list<std::string_view> sounds) {
    WriteSettings({{22, MakeMedia("movies", movies)}, {33, MakeMedia("sounds", sounds)}});
    Start();
}

std::string LogicTest::StartFailure() {
    std::string failure;
    EXPECT_FALSE(TheRuntime().Start([this] { m_app = StartKirolane(); }, failure));
    return failure;
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

void LogicTest::Scan(const std::string& folder) {
    Do([&] {
        Console().FoldNumber = 1;
        Console().Setting_Data.Set(22, folder);
        Console().FolderThread()->Kill();
        Console().FolderThread()->Run();
    });
    Settle();
}

void LogicTest::ScanUntil(const std::string& folder, std::int32_t matches) {
    Do([&] {
        Console().FoldNumber = 1;
        Console().File_Count = 0;
        Console().Setting_Data.Set(22, folder);
        Console().FolderThread()->Kill();
        Console().FolderThread()->Run();
    });
    // Turn by turn instead of by slices, so that the place where it stops is certain.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (Console().File_Count < matches && std::chrono::steady_clock::now() < deadline) {
        TheRuntime().RunPosted(); // what the worker that reads the folder has to say
        TheRuntime().Threads().OneTurnEach();
    }
    ASSERT_EQ(Console().File_Count, matches);
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
