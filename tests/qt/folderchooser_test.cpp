// The folder dialog, with the program going on behind it.

#include "platform/folderitem.h"
#include "platform/thread.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace kirolane::tests {

namespace {

class FolderChooserTest : public QtTest {
protected:
    void SetUp() override { m_console = StartWith<ConsoleShow>(); }

    /// Has `act` done to the dialog once it is up.
    void WithDialog(std::function<void(QFileDialog&)> act) {
        m_look.disconnect();
        m_look.setInterval(5);
        QObject::connect(&m_look, &QTimer::timeout, [this, act = std::move(act)] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return;
            m_look.stop();
            act(*dialog);
        });
        m_look.start();
    }

    Ref<ConsoleShow> m_console;
    QTimer m_look;
};

TEST_F(FolderChooserTest, AChosenFolderComesBackAndStartsTheNextChoice) {
    const std::string folder = Folder().MakeFolder("映画 & more");
    WithDialog([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.screen(), QGuiApplication::primaryScreen());
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("フォルダを選択"));
        dialog.selectFile(QString::fromStdString(folder));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    EXPECT_EQ(Windows().ChooseFolder(), folder);

    WithDialog([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder);
        dialog.reject();
    });
    EXPECT_EQ(Windows().ChooseFolder(), "");
}

TEST_F(FolderChooserTest, ThreadsRunBehindItAndReportsAreDropped) {
    int turns = 0;
    bool stop = false;
    auto thread = m_console->Control<Thread>("FolderThread");
    thread->OnRun = [&]() -> Task {
        while (!stop) {
            ++turns;
            co_await Yield();
        }
    };
    WithDialog([&](QFileDialog& dialog) {
        const int before = turns;
        ASSERT_TRUE(Until([&] { return turns > before + 1000; }));
        m_console->TakeLog();
        m_console->ReportMenuChosen("StopKey");
        EXPECT_TRUE(m_console->TakeLog().empty());
        dialog.reject();
    });
    Do([&] {
        thread->Run();
        EXPECT_TRUE(SelectFolder().IsNil());
    });
    EXPECT_GT(turns, 1000);
    stop = true;
    EXPECT_TRUE(Until([&] { return !Platform().Threads().HasReady(); }));
}

TEST_F(FolderChooserTest, AWindowMovedBehindItStaysWhereItWasMoved) {
    ASSERT_TRUE(Until([&] { // a placing of the program's own has settled by then
        Find("Mainform")->move(300, 200);
        Settle();
        return m_console->Left() == 300;
    }));
    WithDialog([&](QFileDialog& dialog) {
        Find("Mainform")->move(400, 300);
        EXPECT_TRUE(Until([] { return Find("Mainform")->pos() == QPoint(400, 300); }));
        dialog.reject();
    });
    Do([] { SelectFolder(); });
    Do([&] { m_console->SetTitle("another"); });
    Settle();
    EXPECT_EQ(Find("Mainform")->pos(), QPoint(400, 300));
    EXPECT_EQ(m_console->Left(), 400);
}

} // namespace

} // namespace kirolane::tests
