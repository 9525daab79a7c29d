// The folder dialog, with the program going on behind it.

#include "contract/folderitem.h"
#include "qt_test.h"
#include "show_forms.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTimer>

#include <filesystem>

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

    // Typed: the dialog stands in the folder chosen last. A link's ".." is not the text's.
    const std::string deep = Folder().MakeFolder("other/deep");
    std::filesystem::create_directory_symlink(deep, folder + "/link");
    const std::pair<const char*, std::string> typed[] = {
        {"../other", Folder().Path() + "/other"},
        {"./deep", deep},
        {"../../映画 & more/.", folder},
        {"link/../deep", deep},
    };
    for (const auto& [text, chosen] : typed) {
        WithDialog([text = text](QFileDialog& dialog) {
            EXPECT_TRUE(Until([&] { return dialog.isActiveWindow(); }));
            auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            field->setText(QString::fromUtf8(text));
            QTest::keyClick(field, Qt::Key_Return);
            if (dialog.isVisible())
                dialog.reject();
        });
        EXPECT_EQ(Windows().ChooseFolder(), chosen) << text;
    }
    EXPECT_FALSE(QFile::exists(QSettings(QSettings::UserScope, QStringLiteral("QtProject")).fileName()));
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
