// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/FileDialogs.h"

#include "app/ui/NewImageDialog.h"
#include "fileio/DocumentFiles.h"
#include "platform/ui/QtText.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

namespace {

constexpr QLatin1String kNativeEnding("pxd");

bool IsNative(const std::filesystem::path& path)
{
    return QFileInfo(PathToQString(path)).suffix().toLower() == kNativeEnding;
}

} // namespace

CPixoluneDoc* CFileDialogs::New()
{
    CNewImageDialog dialog(m_app.Settings(), &m_window);
    return dialog.exec() == QDialog::Accepted ? m_app.NewDocument() : nullptr;
}

QString CFileDialogs::Folder(const CPixoluneDoc* document) const
{
    if (document && !document->Path().empty())
        return QFileInfo(PathToQString(document->Path())).absolutePath();
    const QStringList recent = m_recentFiles.Paths();
    return recent.isEmpty() ? QDir::homePath() : QFileInfo(recent.first()).absolutePath();
}

QStringList CFileDialogs::ChooseToOpen()
{
    return QFileDialog::getOpenFileNames(&m_window, ToQString(Str::OpenFile), Folder(nullptr),
                                         ToQString(Str::OpenFilter));
}

CPixoluneDoc* CFileDialogs::Open(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    CPixoluneDoc* document = m_app.OpenDocument(ToPath(absolute));
    if (document)
        m_recentFiles.Add(absolute);
    else
        m_recentFiles.Remove(absolute);
    return document;
}

bool CFileDialogs::Save(CPixoluneDoc& document)
{
    return IsNative(document.Path()) ? SaveTo(document, PathToQString(document.Path())) : SaveAs(document);
}

bool CFileDialogs::SaveAs(CPixoluneDoc& document)
{
    const QString name = QFileInfo(ToQString(document.Title())).completeBaseName();
    QFileDialog dialog(&m_window, ToQString(Str::SaveDocumentAs), Folder(&document),
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
