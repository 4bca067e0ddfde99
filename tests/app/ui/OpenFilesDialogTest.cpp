// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/OpenFilesDialog.h"

#include "fileio/FormatTable.h"
#include "fileio/ui/DialogFilters.h"
#include "fileio/ui/FileDialogParts.h"
#include "fileio/ui/FilePreviewPane.h"
#include "platform/ui/PictureView.h"
#include "platform/ui/QtText.h"
#include "support/TestFiles.h"
#include "ui/UiTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

namespace {

/// Three files of a folder: an animation of two frames, a broken one, and a picture.
class COpenFilesTest : public CWindowTest {
protected:
    COpenFilesTest()
    {
        CPixoluneDoc* document = m_app.NewDocument();
        document->Canvas().frameDelay = 3;
        document->Canvas().objects.Append(ObjectAt(UniformDib(640, 480, 0xFF123456), 0, 0));
        for (const char* name : {"a.ani", "c.png"})
            SaveDocumentAs(*document, m_folder.File(name), *FindSaveFormat(name), {});
        WriteContents(m_folder.File("b.png"), std::vector<uint8_t>{1, 2, 3});
    }
    [[nodiscard]] QString PathOf(const char* name) const { return PathToQString(m_folder.File(name)); }
    [[nodiscard]] QString Folder() const { return PathToQString(m_folder.Path()); }
};

TEST_F(COpenFilesTest, ShowsWhatIsChosenLast)
{
    COpenFilesDialog dialog(Str::OpenFile, OpenFilters(), m_app.Settings(), Folder(), nullptr);
    dialog.show();
    auto* pane = dialog.findChild<CFilePreviewPane*>();
    auto* view = pane->findChild<CPictureView*>();
    auto* facts = pane->findChild<QLabel*>();
    QSignalSpy shown(pane, &CFilePreviewPane::Shown);

    // Files that are only passed over are not shown.
    for (const char* name : {"a.ani", "b.png", "c.png"})
        Q_EMIT dialog.currentChanged(PathOf(name));
    ASSERT_TRUE(shown.wait());
    EXPECT_TRUE(facts->text().startsWith(QStringLiteral("PNG picture\n640 x 480 pixels\n24 bits")))
        << facts->text().toStdString();
    EXPECT_FALSE(view->Image().isNull());
    EXPECT_LE(view->Image().width(), view->width());

    Q_EMIT dialog.currentChanged(PathOf("b.png"));
    EXPECT_TRUE(view->Image().isNull()) << "what was shown is not the new file";
    ASSERT_TRUE(shown.wait());
    EXPECT_EQ(view->Text(), ToQString(Str::PreviewUnreadable));

    ASSERT_NE(NameEdit(dialog), nullptr);
    QTest::keyClicks(NameEdit(dialog), QStringLiteral("c.png"));
    ASSERT_TRUE(shown.wait()) << "a name that is typed";
    EXPECT_FALSE(view->Image().isNull());

    Q_EMIT dialog.currentChanged(PathOf("a.ani"));
    ASSERT_TRUE(shown.wait());
    EXPECT_TRUE(facts->text().contains(QStringLiteral("Frames: 2")));
    const QImage first = view->Image();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->Image() != first; })) << "it plays";
    QCheckBox* play = pane->findChildren<QCheckBox*>()[1];
    play->click();
    EXPECT_FALSE(m_app.Settings().IsOn(Setting::AutoPlay));
    const QImage stopped = view->Image();
    QTest::qWait(120);
    EXPECT_EQ(view->Image(), stopped);

    pane->findChildren<QCheckBox*>()[0]->click();
    EXPECT_FALSE(m_app.Settings().IsOn(Setting::PreviewPic));
    EXPECT_TRUE(view->Image().isNull());
    Q_EMIT dialog.currentChanged(PathOf("c.png"));
    EXPECT_FALSE(shown.wait(400)) << "nothing is read while the preview is off";
}

TEST_F(COpenFilesTest, OffersEachFormatAndSeveralFiles)
{
    const QStringList filters = OpenFilters();
    EXPECT_EQ(filters.size(), static_cast<qsizetype>(FormatTable().size()) + 2);
    EXPECT_TRUE(filters.first().startsWith(QStringLiteral("All supported formats (*.gif *.ico")));
    EXPECT_TRUE(filters.contains(QStringLiteral("TIFF picture (*.tif *.tiff)")));

    m_window.OpenFile(PathOf("c.png"));
    for (const bool isFirst : {true, false}) {
        QString folder;
        OnNextDialog<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFiles);
            folder = dialog.directory().absolutePath();
            dialog.setDirectory(Folder());
            dialog.selectFile(PathOf("a.ani"));
            if (isFirst)
                static_cast<QDialog&>(dialog).done(QDialog::Accepted);
            else
                dialog.reject();
        });
        m_window.Action(CommandId::ObjectAddImages)->trigger();
        EXPECT_EQ(m_app.Documents().back()->Canvas().objects.Count(), 3u);
        EXPECT_EQ(folder, Folder()) << "the folder is remembered";
    }
    EXPECT_TRUE(m_ui.messages.empty());
}

} // namespace
