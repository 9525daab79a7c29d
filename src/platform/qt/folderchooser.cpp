#include "platform/qt/folderchooser.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace kirolane::qt {

std::string AskForFolder(QWidget* near, std::string& start) {
    QFileDialog dialog(near, QStringLiteral("フォルダを選択"));
    dialog.setObjectName(QStringLiteral("FolderChooser"));
    dialog.setOptions(QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setViewMode(QFileDialog::List); // dates and sizes would be cut, and tell nothing of a folder
    dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("場所："));
    dialog.setLabelText(QFileDialog::FileName, QStringLiteral("フォルダ："));
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("選択"));
    dialog.setLabelText(QFileDialog::Reject, QStringLiteral("キャンセル"));

    for (const char* idle : {"fileTypeLabel", "fileTypeCombo"}) // there is one kind of folder
        if (auto* widget = dialog.findChild<QWidget*>(QLatin1String(idle)))
            widget->hide();
    dialog.setDirectory(start.empty() ? QDir::homePath() : QFile::decodeName(start.c_str()));

    // Over the console, never over the picture that an audience sees.
    const QScreen* screen = near != nullptr ? near->screen() : QGuiApplication::primaryScreen();
    if (screen != nullptr) {
        const QRect area = screen->availableGeometry();
        QRect place(near != nullptr ? near->pos() + QPoint(40, 40) : area.topLeft(),
                    QSize(640, 420).boundedTo(area.size()));
        place.moveRight(std::min(place.right(), area.right()));
        place.moveBottom(std::min(place.bottom(), area.bottom()));
        dialog.resize(place.size());
        dialog.move(place.topLeft());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    start = QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
    return start;
}

} // namespace kirolane::qt
