// Each window of the program as it stands after the start, widget by widget, against tables of its own.

#include "logic/about/verform.h"
#include "logic/display/monitorform.h"
#include "logic/settings/settingform.h"
#include "logic/shell/mainform.h"
#include "logic/shell/start.h"
#include "logic/sound/musicform.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSlider>
#include <QTabBar>
#include <QTableView>

#include <functional>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include <qpa/qwindowsysteminterface.h>

namespace kirolane::tests {

namespace {

/// A line is name, class, left, top, width, height, what particular state it is in, and behind a bar its
/// text. A pair of names stands for a control of the first page and its twin on the second, which are shown
/// in turn. Labels are 9 pixels high, black and at the left where nothing else is said.
using Table = std::string;

/// Ten lines of the same kind, with "#" for the number and "@" for the place that goes with it.
Table Ten(const std::string& line, const std::function<int(int)>& place) {
    Table lines;
    for (int n = 1; n <= 10; ++n)
        for (const char c : line + "\n")
            lines += c == '#' ? std::to_string(n) : c == '@' ? std::to_string(place(n)) : std::string(1, c);
    return lines;
}

const Table kMainform = R"(
Mainform Window 800 420 close minimise|Kirolane
GroupBox1 GroupBox 4 5 335 300|コンソール
QTM MoviePlayer 11 28 320 240 hidden|
QTM_PosBar Slider 10 276 320 16 off 0 to 1 at 0 page 20|
GroupBox2 GroupBox 4 310 335 105|コントローラー
MonitorPosTime StaticText 14 330 50 20 centre|00：00：00
StaticText4 StaticText 71 330 8 20|/
MaxTime StaticText 84 330 50 20 centre|00：00：00
PlayModeLabel StaticText 134 330 50 20 centre|
MediaType StaticText 179 330 40 20 centre|
MovieSize StaticText 218 330 55 20 centre|
VolumeLabel StaticText 273 330 65 20 centre|Volume： 80
QTM_PlayButton Button 50 355 50 50 off|＞
QTM_FrameFreeDownButton Button 24 379 23 22 off|<<
QTM_FrameFreeUpButton Button 101 379 23 22 off|>>
RateText StaticText 225 355 55 20|Rate：±０
Rate Slider 197 379 100 16 0 to 10 at 5 page 7|
VolumeProgress ProgressBar 309 360 21 36 80 of 100|
ListTab TabPanel 347 2 450 413|ムービー,サウンド
StrGrid/mStrGrid Listbox 356 40 433 318 columns 18 348 50 rows 26| ,ファイル名,時間
DD/mDD StaticText 356 365 40 20|フォルダ：
DirLabel/mDirLabel StaticText 401 365 385 20|
LoopLabel/mLoopLabel StaticText 765 362 20 20 centre|
CountLabel/mCountLabel StaticText 621 384 43 20 red hidden|カウント中：
FileNumberLabel/mFileNumberLabel StaticText 666 384 120 20 right|0
)" + Ten("Fold#/mFold# Button @ 383 24 22|#", [](int n) { return n == 1 ? 356 : 378 + 23 * (n - 2); }) +
                        R"(Fold99/mFold99 Button 585 383 24 22|?
DummyBack Rectangle 11 28 320 240|
DummyQTM Canvas 91 88 160 120|
FileLabel StaticText 115 306 224 20|
PosTIme StaticText 90 2 50 20|00：00：00
TimingLabel StaticText 181 2 150 20 right grey|±0秒： Timing
)";

const Table kMonitorForm = R"(
MonitorForm Window 320 240 ground 000000|モニター
QTM MoviePlayer 0 0 320 240 hidden|
DummyBack Rectangle 349 0 320 241|
DummyQTM Canvas 431 63 157 120|
)";

const Table kMusicForm = R"(
MusicForm Window 140 265 close|Untitled
GroupBox1 GroupBox 0 0 139 265|コントローラー２
FileLabel StaticText 10 20 120 25|
PlayModeLabel StaticText 10 49 40 20 centre|
MediaType StaticText 55 49 30 20 centre|
VolumeProgress ProgressBar 102 52 21 36 80 of 100|
VolumeLabel StaticText 10 72 75 20 centre|Volume： 80
QTM_PosBar Slider 10 108 120 16 off 0 to 1 at 0 page 20|
PosTime StaticText 10 129 50 20 centre|00：00：00
StaticText1 StaticText 67 129 8 20|/
MaxTime StaticText 80 129 50 20 centre|00：00：00
QTM_PlayButton Button 46 154 50 50 off|＞
QTM_FrameFreeDownButton Button 20 178 23 22 off|<<
QTM_FrameFreeUpButton Button 97 178 23 22 off|>>
RateText StaticText 48 211 45 20 8px|Rate：±０
Rate Slider 20 234 100 16 0 to 10 at 5 page 7|
QTM MoviePlayer 10 286 100 100 hidden|
)";

int FolderTop(int n) {
    return 148 + 22 * (n - 1);
}

const Table kSettingForm = R"(
SettingForm Window 688 400 ground b1b1b1 close|環境設定
GroupBox9 GroupBox 10 10 175 212|起動時に表示
GroupBox4 GroupBox 22 31 150 110|モニターウィンドウ
DisplayMode_Check CheckBox 32 59 130 20 ticked|デュアルディスプレイモード
FullScreen_Check CheckBox 47 84 115 20 off|フルスクリーン
Hide_Check CheckBox 61 109 101 20 off|非表示
GroupBox8 GroupBox 22 150 150 60|コンソールウィンドウ
WindowColor_Check CheckBox 32 178 100 20 off|フラット
SettingButton Button 67 289 60 22|設定変更
MessageLabel StaticText 47 336 95 20 centre red bold 10px|
ListTab TabPanel 197 7 480 385|ムービー,サウンド
GroupBox2/GroupBox6 GroupBox 207 52 100 60|指定時間
FreeSeek_Popup/mFreeSeek_Popup PopupMenu 222 81 70 20 3 of 19|2分
GroupBox1/GroupBox5 GroupBox 317 52 100 60|フォルダ番号
FolderNumber_Edit/mFolderNumber_Edit EditField 347 78 26 22 off centre|1
UpDownArrow/mUpDownArrow UpDownArrows 377 78 13 23|
GroupBox3/GroupBox7 GroupBox 207 122 460 258|フォルダ
)" + Ten("Folder#_Bevel/mFolder#_Bevel Button 225 @ 60 22|# - 変更", FolderTop) +
                           Ten("Folder#_Edit/mFolder#_Edit EditField 300 @ 350 22 off|", FolderTop);

const Table kVerForm = R"(
VerForm Window 245 300 ground b1b1b1|バージョン情報
Canvas1 Canvas 43 2 160 120|
LotoLabel StaticText 0 125 245 45 centre 30px|Kirolane
VerLabel StaticText 0 159 245 20 centre 12px|Version 1.2
CopyrightLabel StaticText 0 184 245 20 centre 12px|© 2026 Kirolane contributors
OKButton PushButton 146 268 80 20|OK
)";

using Lines = std::set<std::string>;

/// One line a control, with that page in front.
Lines Expected(const Table& table, int page) {
    Lines lines;
    std::istringstream stream(table);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t slash = line.substr(0, line.find(' ')).find('/');
        if (slash == std::string::npos) {
            lines.insert(line);
            continue;
        }
        const std::size_t blank = line.find(' ');
        const std::string pair[] = {line.substr(0, slash), line.substr(slash + 1, blank - slash - 1)};
        const std::size_t bar = line.find('|');
        for (int side = 0; side < 2; ++side) {
            const bool away = side != page && line.find(" hidden|") == std::string::npos;
            lines.insert(pair[side] + line.substr(blank, bar - blank) + (away ? " hidden" : "") +
                         line.substr(bar));
        }
    }
    lines.erase("");
    return lines;
}

std::string Text(const QString& text) {
    return text.toStdString();
}

/// Class, then what this class alone has.
struct Kind {
    std::string name, state, text;
};

std::string Type(const QWidget& widget, Qt::Alignment align) {
    std::string state;
    if (align & Qt::AlignHCenter)
        state += " centre";
    if (align & Qt::AlignRight)
        state += " right";
    const QColor color = widget.palette().color(QPalette::Active, QPalette::WindowText);
    if (color == QColor(255, 0, 0))
        state += " red";
    else if (color == QColor(128, 128, 128))
        state += " grey";
    else if (color != QColor(Qt::black))
        state += " " + Text(color.name());
    if (widget.font().bold())
        state += " bold";
    if (const int size = widget.font().pixelSize(); size != 9)
        state += " " + std::to_string(size) + "px";
    return state;
}

Kind KindOf(QWidget& widget) {
    if (const auto* label = qobject_cast<QLabel*>(&widget))
        return {"StaticText", Type(*label, label->alignment()), Text(label->text())};
    if (const auto* box = qobject_cast<QGroupBox*>(&widget))
        return {"GroupBox", "", Text(box->title())};
    if (const auto* slider = qobject_cast<QSlider*>(&widget))
        return {"Slider",
                " " + std::to_string(slider->minimum()) + " to " + std::to_string(slider->maximum()) +
                    " at " + std::to_string(slider->value()) + " page " + std::to_string(slider->pageStep()),
                ""};
    if (const auto* bar = qobject_cast<QProgressBar*>(&widget))
        return {"ProgressBar", " " + std::to_string(bar->value()) + " of " + std::to_string(bar->maximum()),
                ""};
    if (const auto* box = qobject_cast<QComboBox*>(&widget))
        return {"PopupMenu",
                " " + std::to_string(box->currentIndex() + 1) + " of " + std::to_string(box->count()),
                Text(box->currentText())};
    if (const auto* field = qobject_cast<QLineEdit*>(&widget))
        return {"EditField", field->alignment() & Qt::AlignHCenter ? " centre" : "", Text(field->text())};
    if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        const bool tick = widget.inherits("QCheckBox");
        const bool push = widget.inherits("QPushButton");
        return {tick   ? "CheckBox"
                : push ? "PushButton"
                       : "Button",
                button->isChecked() ? (tick ? " ticked" : " down") : "", Text(button->text())};
    }
    if (const auto* list = qobject_cast<QTableView*>(&widget)) {
        Kind kind{"Listbox", " columns", ""};
        for (int column = 0; column < list->model()->columnCount(); ++column) {
            kind.state += " " + std::to_string(list->columnWidth(column));
            kind.text +=
                (column > 0 ? "," : "") + Text(list->model()->headerData(column, Qt::Horizontal).toString());
        }
        kind.state += " rows " + std::to_string(list->model()->rowCount());
        return kind;
    }
    if (const auto* tabs = widget.findChild<QTabBar*>()) {
        Kind kind{"TabPanel", "", ""};
        for (int tab = 0; tab < tabs->count(); ++tab)
            kind.text += (tab > 0 ? "," : "") + Text(tabs->tabText(tab));
        return kind;
    }
    switch (QAccessible::queryAccessibleInterface(&widget)->role()) {
    case QAccessible::Animation:
        return {"MoviePlayer", "", ""};
    case QAccessible::Grouping:
        return {"UpDownArrows", "", ""};
    case QAccessible::Graphic: {
        QImage black(widget.size(), QImage::Format_RGB32);
        black.fill(Qt::black);
        const bool plain = widget.grab().toImage().convertToFormat(QImage::Format_RGB32) == black;
        return {plain ? "Rectangle" : "Canvas", "", ""};
    }
    default:
        return {widget.metaObject()->className(), "", ""};
    }
}

class FormsTest : public QtTest {
protected:
    void SetUp() override {
        // No line asks for a folder or for a place of the monitor: all stands as it was designed.
        static_cast<void>(Folder().MakeFolder("home/Library/Application Support/Kirolane/Setting"));
        static_cast<void>(Folder().Write("home/Library/Application Support/Kirolane/Setting/ES",
                                         "// DisplayMode\n\n\n\n\n\n\nfalse\n"));
        std::string failure;
        ASSERT_TRUE(TheRuntime().Start([this] { m_app = StartKirolane(); }, failure)) << failure;
        Settle();
    }

    /// The window and its controls as lines of a table.
    static Lines Seen(const std::string& name) {
        QWidget* window = Find(name);
        Lines lines = {DescribeWindow(*window)};
        for (QWidget* widget : window->findChildren<QWidget*>())
            if (IsControl(*widget))
                lines.insert(Describe(*widget));
        return lines;
    }

    /// A difference of one line reads as that line alone.
    static void ExpectLines(const Lines& seen, const Lines& expected) {
        for (const std::string& line : expected)
            EXPECT_TRUE(seen.contains(line)) << "missing: " << line;
        for (const std::string& line : seen)
            EXPECT_TRUE(expected.contains(line)) << "instead: " << line;
    }

private:
    static bool IsControl(const QWidget& widget) {
        return !widget.isWindow() && !widget.objectName().isEmpty() && !widget.objectName().contains('.') &&
               widget.accessibleDescription() == widget.objectName();
    }

    static std::string Describe(QWidget& widget) {
        const Kind kind = KindOf(widget);
        std::ostringstream line;
        const QRect place = widget.geometry();
        line << Text(widget.objectName()) << " " << kind.name << " " << place.x() << " " << place.y() << " "
             << place.width() << " "
             << place.height() + (kind.name == "MoviePlayer" ? MoviePlayer::kHiddenStrip : 0)
             << (widget.isEnabled() ? "" : " off") << kind.state << (widget.isHidden() ? " hidden" : "")
             << "|" << kind.text;
        return line.str();
    }

    static std::string DescribeWindow(const QWidget& window) {
        const auto* content = window.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        const QColor ground = content->palette().color(QPalette::Window);
        std::ostringstream line;
        line << Text(window.objectName()) << " Window " << content->width() << " " << content->height();
        if (ground != QApplication::palette().color(QPalette::Window))
            line << " ground " << Text(ground.name().mid(1));
        if (window.windowFlags() & Qt::WindowCloseButtonHint)
            line << " close";
        if (window.windowFlags() & Qt::WindowMinimizeButtonHint)
            line << " minimise";
        line << "|" << Text(window.windowTitle());
        return line.str();
    }

    std::unique_ptr<App> m_app;
};

TEST_F(FormsTest, EachWindowIsWhatItsTableSays) {
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_EQ(window->isVisible(),
                  window->objectName() == "Mainform" || window->objectName() == "MonitorForm")
            << Text(window->objectName());
    Do([] {
        Instance<MusicForm>()->Show();
        Instance<SettingForm>()->Show();
        Instance<VerForm>()->Show();
    });
    ExpectLines(Seen("MonitorForm"), Expected(kMonitorForm, 0));
    ExpectLines(Seen("MusicForm"), Expected(kMusicForm, 0));
    ExpectLines(Seen("VerForm"), Expected(kVerForm, 0));
    const std::pair<const char*, const Table*> paged[] = {{"Mainform", &kMainform},
                                                          {"SettingForm", &kSettingForm}};
    for (const auto& [form, table] : paged) {
        ExpectLines(Seen(form), Expected(*table, 0));
        Find<QTabBar>(form, "ListTab.Tabs")->setCurrentIndex(1);
        ExpectLines(Seen(form), Expected(*table, 1));
    }
}

TEST_F(FormsTest, AWheelThatPassesOverChangesNothing) {
    Do([] { Instance<SettingForm>()->Show(); });
    for (const char* form : {"Mainform", "SettingForm"}) {
        Find<QTabBar>(form, "ListTab.Tabs")->setCurrentIndex(0);
        for (auto* slider : Find(form)->findChildren<QSlider*>())
            slider->setEnabled(true);
        const Lines before = Seen(form);
        for (const int turn : {-240, 240}) {
            for (const QWidget* widget : Find(form)->findChildren<QWidget*>()) {
                const QPoint at = widget->mapTo(widget->window(), widget->rect().center());
                if (widget->isVisible())
                    QWindowSystemInterface::handleWheelEvent(Find(form)->windowHandle(), at,
                                                             widget->window()->mapToGlobal(at), {},
                                                             {turn, turn}, Qt::NoModifier);
            }
            Settle();
            ExpectLines(Seen(form), before);
        }
    }
}

class FineScreenTest : public QtTest {
protected:
    FineScreenTest() : QtTest({{"Main", {0, 0, 1920, 1200}, 2.0}}) {}
};

TEST_F(FineScreenTest, ThePictureIsTheOneOfMorePixels) {
    StartWith<AboutShow>();
    const QImage wanted = QImage(":/pictures/Kirologo@2x.png").convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(wanted.size(), QSize(320, 240));
    EXPECT_EQ(Look("VerForm", "Canvas1").convertToFormat(QImage::Format_RGB32), wanted);
}

} // namespace

} // namespace kirolane::tests
