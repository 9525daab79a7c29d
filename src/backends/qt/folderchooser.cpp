#include "backends/qt/folderchooser.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

#include <algorithm>

namespace kirolane::qt {

namespace {

/// The path without the "." and ".." that a person may have typed: they are no names to store. Where a link
/// stands before them the folder decides, not the text.
QString WithoutDots(const QString& path) {
    const QString clean = QDir::cleanPath(path);
    const QString real = QFileInfo(path).canonicalFilePath();
    return QFileInfo(clean).canonicalFilePath() == real ? clean : real;
}

} // namespace

std::string AskForFolder(QWidget* near, std::string& start) {
    // Qt's dialog would keep sizes and visits in the home folder, and read those of other programs.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
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
    start = QFile::encodeName(WithoutDots(dialog.selectedFiles().constFirst())).toStdString();
    return start;
}

} // namespace kirolane::qt
