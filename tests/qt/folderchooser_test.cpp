#include "qt_test.h"

#include <filesystem>

namespace kirolane::tests {

namespace {

class FolderChooserTest : public QtTest {
protected:
    /// What is chosen where `act` is done to the dialog once it is up.
    std::string Choose(const std::function<void(QFileDialog&)>& act) {
        QTimer look;
        look.callOnTimeout([&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return;
            look.stop();
            act(*dialog);
        });
        look.start(5);
        std::string chosen;
        Do([&] { chosen = m_runtime->ChooseFolder(); });
        return chosen;
    }
};

TEST_F(FolderChooserTest, AChosenFolderComesBackAndStartsTheNextChoice) {
    const std::string folder = m_folder.MakeFolder("映画 & more");
    EXPECT_EQ(Choose([&](QFileDialog& dialog) {
                  EXPECT_TRUE(
                      QGuiApplication::primaryScreen()->availableGeometry().contains(dialog.geometry()));
                  dialog.selectFile(QString::fromStdString(folder));
                  dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
              }),
              folder);
    // Typed: the dialog stands in the folder chosen last. A link's ".." is not the text's.
    const std::string deep = m_folder.MakeFolder("other/deep");
    std::filesystem::create_directory_symlink(deep, folder + "/link");
    const std::pair<const char*, std::string> typed[] = {
        {"../other", m_folder.Path("other")},
        {"./deep", deep},
        {"../../映画 & more/.", folder},
        {"link/../deep", deep},
    };
    for (const auto& [text, chosen] : typed)
        EXPECT_EQ(Choose([text = text](QFileDialog& dialog) {
                      EXPECT_TRUE(Until([&] { return dialog.isActiveWindow(); }));
                      auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
                      field->setText(QString::fromUtf8(text));
                      QTest::keyClick(field, Qt::Key_Return);
                      if (dialog.isVisible())
                          dialog.reject();
                  }),
                  chosen)
            << text;
    EXPECT_FALSE(QFile::exists(QSettings(QSettings::UserScope, "QtProject").fileName()));
}

} // namespace

} // namespace kirolane::tests
