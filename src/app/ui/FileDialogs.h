// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PixoluneApp.h"
#include "app/ui/RecentFiles.h"
#include "fileio/DocumentFiles.h"
#include "fileio/SaveAs.h"

#include <QFileDialog>
#include <QStringList>

class QWidget;

/// What the user is asked about documents and their files, and what follows.
class CFileDialogs {
public:
    /// window: the parent of all dialogs.
    CFileDialogs(CPixoluneApp& app, CRecentFiles& recentFiles, QWidget& window)
        : m_app(app), m_recentFiles(recentFiles), m_window(window)
    {
    }

    /// Shows the New Image dialog; none when it was cancelled.
    [[nodiscard]] CPixoluneDoc* New();
    /// The files chosen in the open dialog.
    [[nodiscard]] QStringList ChooseToOpen();
    /// None when the file cannot be loaded.
    [[nodiscard]] CPixoluneDoc* Open(const QString& path);
    /// Writes the native file; asks for a name when the document has none of that kind.
    bool Save(CPixoluneDoc& document);
    bool SaveAs(CPixoluneDoc& document);
    /// Asks for a name and the options of the format, and writes the picture.
    bool Export(CPixoluneDoc& document, const SaveFormatRow& format);
    /// Asks for a name and how the animation plays, and writes the visible objects as its frames.
    bool ExportFrames(CPixoluneDoc& document);
    /// Asks for pictures, or for a video, and adds them as objects.
    bool Add(CPixoluneDoc& document, AddKind kind);
    /// Asks what to do about unsaved changes; false when the document is to stay open.
    bool MayClose(CPixoluneDoc& document);

private:
    /// Offers what can be read of a damaged native file; none when it holds nothing or the user declines.
    [[nodiscard]] CPixoluneDoc* OpenWholeObjects(const std::filesystem::path& path);
    bool SaveTo(CPixoluneDoc& document, const QString& path);
    /// Where a document is saved at first.
    [[nodiscard]] QString FolderOf(const CPixoluneDoc& document) const;
    /// Where files to open were chosen last.
    [[nodiscard]] QString OpenFolder() const;
    /// Empty when the dialog was cancelled.
    [[nodiscard]] QStringList ChooseFiles(Str title, const QStringList& filters,
                                          QFileDialog::FileMode mode = QFileDialog::ExistingFiles);

    CPixoluneApp& m_app;
    CRecentFiles& m_recentFiles;
    QWidget& m_window;
};
