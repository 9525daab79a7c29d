#include "backends/qt/words.h"

#include <algorithm>
#include <string_view>

namespace kirolane::qt {

namespace {

struct Word {
    std::string_view context;
    std::string_view source;
    const char* word;
};

// clang-format off
constexpr Word kWords[] = {
    {"QFileDialog",      "Back",               "戻る"},
    {"QFileDialog",      "Forward",            "進む"},
    {"QFileDialog",      "Go back",            "戻る"},
    {"QFileDialog",      "Go forward",         "進む"},
    {"QFileDialog",      "Parent Directory",   "上の階層"},
    {"QFileDialog",      "Go to the parent directory", "上の階層に移動"},
    {"QFileDialog",      "Create New Folder",  "新しいフォルダを作成"},
    {"QFileDialog",      "Create a New Folder", "新しいフォルダを作成"},
    {"QFileDialog",      "New Folder",         "新しいフォルダ"},
    {"QFileDialog",      "List View",          "一覧表示"},
    {"QFileDialog",      "Change to list view mode", "一覧表示に切り替え"},
    {"QFileDialog",      "Detail View",        "詳細表示"},
    {"QFileDialog",      "Change to detail view mode", "詳細表示に切り替え"},
    {"QFileDialog",      "Sidebar",            "よく使う場所"},
    {"QFileDialog",      "&Rename",            "名前を変更(&R)"},
    {"QFileDialog",      "&Delete",            "削除(&D)"},
    {"QFileDialog",      "Show &hidden files", "隠しファイルを表示(&H)"},
    {"QFileDialog",      "&New Folder",        "新しいフォルダ(&N)"},
    {"QFileDialog",      "Delete",             "削除"},
    {"QFileDialog",      "Remove",             "取り除く"},
    {"QFileDialog",      "Directories",        "フォルダ"},
    {"QFileDialog",      "My Computer",        "コンピュータ"},
    {"QFileDialog",      "%1\nDirectory not found.\nPlease verify the correct directory name was given.",
                         "%1\nフォルダが見つかりません。\n名前を確かめてください。"},
    {"QFileDialog",      "Are you sure you want to delete '%1'?", "「%1」を削除しますか？"},
    {"QFileDialog",      "Could not delete directory.", "フォルダを削除できませんでした。"},
    {"QFileSystemModel", "Name",               "名前"},
    {"QFileSystemModel", "Size",               "サイズ"},
    {"QFileSystemModel", "Kind",               "種類"},
    {"QFileSystemModel", "Type",               "種類"},
    {"QFileSystemModel", "Date Modified",      "変更日"},
    {"QFileSystemModel", "My Computer",        "コンピュータ"},
    {"QFileSystemModel", "Computer",           "コンピュータ"},
    {"QAbstractFileIconProvider", "Folder",    "フォルダ"},
    {"QAbstractFileIconProvider", "Drive",     "ドライブ"},
    {"QLineEdit",        "&Undo",              "元に戻す(&U)"},
    {"QLineEdit",        "&Redo",              "やり直す(&R)"},
    {"QLineEdit",        "Cu&t",               "切り取り(&T)"},
    {"QLineEdit",        "&Copy",              "コピー(&C)"},
    {"QLineEdit",        "&Paste",             "貼り付け(&P)"},
    {"QLineEdit",        "Delete",             "削除"},
    {"QLineEdit",        "Select All",         "すべてを選択"},
    {"QTabBar",          "Scroll Left",        "前のページ"},
    {"QTabBar",          "Scroll Right",       "次のページ"},
    {"QShortcut",        "Meta",               "Super"}, // as keyboards and desktops have it
    {"QShortcut",        "Left",               "←"},
    {"QShortcut",        "Right",              "→"},
    {"QShortcut",        "Up",                 "↑"},
    {"QShortcut",        "Down",               "↓"},
};
// clang-format on

} // namespace

QString Words::translate(const char* context, const char* source, const char* /*disambiguation*/,
                         int /*n*/) const {
    const auto word = std::find_if(std::begin(kWords), std::end(kWords), [&](const Word& row) {
        return row.context == context && row.source == source;
    });
    return word == std::end(kWords) ? QString() : QString::fromUtf8(word->word);
}

} // namespace kirolane::qt
