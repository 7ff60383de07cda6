#include "ui/FileChooser.h"

#include <QApplication>
#include <QFileDialog>

#include "platform/base/FileDialog.h"
#include "platform/qt/QtGlue.h"

QStringList QtNameFilters(const CString& filter) {
    const QStringList parts = ToQString(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i];
        if (name.isEmpty())
            break;
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            if (pattern == QStringLiteral("*.*"))
                pattern = QStringLiteral("*");
        }
        // The name shows its patterns once, as Qt reads them.
        const qsizetype open = name.lastIndexOf(QLatin1Char('('));
        if (open >= 0)
            name = name.left(open).trimmed();
        filters << QStringLiteral("%1 (%2)").arg(name, patterns.join(QLatin1Char(' ')));
    }
    return filters;
}

namespace {

void PrepareOpenPicker(QFileDialog& dialog, const FileDialogRequest& request) {
    dialog.setNameFilters(QtNameFilters(request.filter));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    if (!request.title.IsEmpty())
        dialog.setWindowTitle(ToQString(request.title));
    if (!request.initialFolder.IsEmpty())
        dialog.setDirectory(ToQString(request.initialFolder));
}

} // namespace

void InstallFileChooser() {
    SetMultiFileDialogHook([](const FileDialogRequest& request, CStringArray& paths) -> BOOL {
        QFileDialog dialog(QApplication::activeWindow());
        PrepareOpenPicker(dialog, request);
        dialog.setFileMode(QFileDialog::ExistingFiles);
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
            return FALSE;
        paths.RemoveAll();
        for (const QString& file : dialog.selectedFiles())
            paths.Add(FromQString(file));
        return TRUE;
    });
    SetFileDialogHook([](const FileDialogRequest& request, CString& path) -> BOOL {
        QFileDialog dialog(QApplication::activeWindow());
        dialog.setNameFilters(QtNameFilters(request.filter));
        if (!request.title.IsEmpty())
            dialog.setWindowTitle(ToQString(request.title));
        if (request.open) {
            dialog.setAcceptMode(QFileDialog::AcceptOpen);
            dialog.setFileMode(QFileDialog::ExistingFile);
        } else {
            // A save picker names new files too: the one to export to
            // needn't exist yet, and an existing one is asked about first.
            dialog.setAcceptMode(QFileDialog::AcceptSave);
            dialog.setFileMode(QFileDialog::AnyFile);
            if (!(request.flags & OFN_OVERWRITEPROMPT))
                dialog.setOption(QFileDialog::DontConfirmOverwrite);
        }
        QString suffix = ToQString(request.defaultExt);
        if (suffix.startsWith(QLatin1Char('.')))
            suffix.remove(0, 1);
        dialog.setDefaultSuffix(suffix);
        if (!request.initialFolder.IsEmpty())
            dialog.setDirectory(ToQString(request.initialFolder));
        if (!request.defaultName.IsEmpty())
            dialog.selectFile(ToQString(request.defaultName));
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
            return FALSE;
        path = FromQString(dialog.selectedFiles().first());
        return TRUE;
    });
    SetFolderBrowseHook([](const FolderBrowseRequest& request, CString& path) -> BOOL {
        const QString folder = QFileDialog::getExistingDirectory(
            QApplication::activeWindow(), ToQString(request.prompt),
            ToQString(request.initialFolder), QFileDialog::ShowDirsOnly);
        if (folder.isEmpty())
            return FALSE;
        path = FromQString(folder);
        return TRUE;
    });
}
