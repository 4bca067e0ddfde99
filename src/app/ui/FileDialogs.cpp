// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/FileDialogs.h"

#include "app/ui/NewImageDialog.h"
#include "fileio/NativeFile.h"
#include "fileio/NativeSalvage.h"
#include "fileio/ui/DialogFilters.h"
#include "fileio/ui/ExportAnimationDialog.h"
#include "fileio/ui/OpenFilesDialog.h"
#include "fileio/ui/SaveAsDialog.h"
#include "platform/ui/QtText.h"

#include <QDir>
#include <QMessageBox>

namespace {

constexpr QLatin1String kNativeEnding("pxd");

} // namespace

CPixoluneDoc* CFileDialogs::New()
{
    CNewImageDialog dialog(m_app.Settings(), &m_window);
    return dialog.exec() == QDialog::Accepted ? m_app.NewDocument() : nullptr;
}

QString CFileDialogs::FolderOf(const CPixoluneDoc& document) const
{
    return document.Path().empty() ? OpenFolder() : QFileInfo(PathToQString(document.Path())).absolutePath();
}

QString CFileDialogs::OpenFolder() const
{
    const QString chosen = m_recentFiles.Folder();
    if (QFileInfo(chosen).isDir())
        return chosen;
    const QStringList recent = m_recentFiles.Paths();
    return recent.isEmpty() ? QDir::homePath() : QFileInfo(recent.first()).absolutePath();
}

QStringList CFileDialogs::ChooseFiles(Str title, const QStringList& filters, QFileDialog::FileMode mode)
{
    COpenFilesDialog dialog(title, filters, m_app.Settings(), OpenFolder(), &m_window);
    dialog.setFileMode(mode);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    m_recentFiles.SetFolder(dialog.directory().absolutePath());
    return dialog.selectedFiles();
}

QStringList CFileDialogs::ChooseToOpen()
{
    return ChooseFiles(Str::OpenFile, OpenFilters());
}

CPixoluneDoc* CFileDialogs::Open(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    CPixoluneDoc* document = m_app.OpenDocument(ToPath(absolute));
    if (document) {
        m_recentFiles.Add(absolute);
        return document;
    }
    m_recentFiles.Remove(absolute);
    return IsNativePath(ToPath(absolute)) ? OpenWholeObjects(ToPath(absolute)) : nullptr;
}

CPixoluneDoc* CFileDialogs::OpenWholeObjects(const std::filesystem::path& path)
{
    std::optional<NativeSalvage> salvage = SalvageNativeFile(path);
    if (!salvage || salvage->canvas.objects.IsEmpty())
        return nullptr;
    QMessageBox box(QMessageBox::Question, ToQString(Str::ApplicationTitle),
                    ToQString(Text(Str::OpenWholeObjects, static_cast<int>(salvage->canvas.objects.Count()),
                                   static_cast<int>(salvage->statedObjects))),
                    QMessageBox::Yes | QMessageBox::No, &m_window);
    return box.exec() == QMessageBox::Yes
               ? m_app.AdoptDocument(std::move(salvage->canvas), path.filename().string())
               : nullptr;
}

bool CFileDialogs::Save(CPixoluneDoc& document)
{
    return IsNativePath(document.Path()) ? SaveTo(document, PathToQString(document.Path()))
                                         : SaveAs(document);
}

bool CFileDialogs::SaveAs(CPixoluneDoc& document)
{
    const QString name = QFileInfo(ToQString(document.Title())).completeBaseName();
    QFileDialog dialog(&m_window, ToQString(Str::SaveDocumentAs), FolderOf(document),
                       ToQString(Str::NativeFilter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kNativeEnding);
    dialog.selectFile(name + QLatin1Char('.') + kNativeEnding);
    return dialog.exec() == QDialog::Accepted && SaveTo(document, dialog.selectedFiles().value(0));
}

bool CFileDialogs::SaveTo(CPixoluneDoc& document, const QString& path)
{
    if (!SaveDocument(document, ToPath(path)))
        return false;
    m_recentFiles.Add(path);
    return true;
}

bool CFileDialogs::Export(CPixoluneDoc& document, const SaveFormatRow& format)
{
    const QString name = QFileInfo(ToQString(document.Title())).completeBaseName();
    CSaveAsDialog dialog(format, m_app.Settings(), document.Canvas(), FolderOf(document), name, &m_window);
    return dialog.exec() == QDialog::Accepted &&
           SaveDocumentAs(document, ToPath(dialog.selectedFiles().value(0)), format, dialog.Options());
}

bool CFileDialogs::ExportFrames(CPixoluneDoc& document)
{
    const QString name = QFileInfo(ToQString(document.Title())).completeBaseName();
    CExportAnimationDialog dialog(document.Canvas(), m_app.Settings(), FolderOf(document), name, &m_window);
    return dialog.exec() == QDialog::Accepted &&
           ExportAnimation(document, ToPath(dialog.selectedFiles().value(0)), dialog.Options());
}

bool CFileDialogs::Add(CPixoluneDoc& document, AddKind kind)
{
    const QStringList files = kind == AddKind::Avi ? ChooseFiles(Str::AddAviFile, {ToQString(Str::AviFilter)},
                                                                 QFileDialog::ExistingFile)
                                                   : ChooseFiles(Str::AddImageFiles, OpenFilters());
    if (files.isEmpty())
        return false;
    std::vector<std::filesystem::path> paths;
    for (const QString& path : files)
        paths.push_back(ToPath(path));
    return AddFiles(document, paths, kind);
}

bool CFileDialogs::MayClose(CPixoluneDoc& document)
{
    if (!document.IsModified())
        return true;
    QMessageBox box(QMessageBox::Warning, ToQString(Str::ApplicationTitle),
                    ToQString(Text(Str::SaveChanges, document.Title())),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &m_window);
    box.setTextFormat(Qt::PlainText);
    switch (box.exec()) {
    case QMessageBox::Save:
        return Save(document);
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}
