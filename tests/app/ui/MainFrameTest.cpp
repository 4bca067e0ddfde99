// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "app/ui/RecentFiles.h"
#include "app/ui/StatusBar.h"
#include "canvas/SelectionOperations.h"
#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/QtText.h"
#include "ui/UiTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QMessageBox>

#include <map>

namespace {

QString WritePicture(const CTemporaryFolder& folder, const char* name)
{
    QImage image(40, 30, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30, 128));
    const QString path = QString::fromStdString((folder.Path() / name).string());
    EXPECT_TRUE(image.save(path));
    return path;
}

} // namespace

TEST_F(CWindowTest, OpenedPictureIsUnmodifiedAndRemembered)
{
    const QString path = WritePicture(m_folder, "green.png");
    CChildFrame* frame = m_window.OpenFile(path);
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->Document().Canvas().Size(), (Size{40, 30}));
    EXPECT_TRUE(m_window.windowTitle().startsWith(QLatin1String("green.png[*]")));
    EXPECT_FALSE(m_window.isWindowModified());
    EXPECT_FALSE(m_window.Action(CommandId::EditUndo)->isEnabled());
    EXPECT_EQ(CRecentFiles(m_configuration).Paths(), QStringList(path));
    m_window.Show(*m_app.NewDocument());
    EXPECT_EQ(m_window.OpenFile(path), frame) << "it is open already";
    EXPECT_EQ(m_app.Documents().size(), 2U);

    m_window.Action(CommandId::ObjectNew)->trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_window.isWindowModified());
    EXPECT_TRUE(m_window.Action(CommandId::EditUndo)->isEnabled());
    EXPECT_EQ(m_window.Action(CommandId::EditUndo)->text(), QLatin1String("Undo new object"));
}

TEST_F(CWindowTest, UnreadableFileIsReportedAndForgotten)
{
    const QString path = QString::fromStdString((m_folder.Path() / "broken.png").string());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    CRecentFiles(m_configuration).Add(path);
    EXPECT_EQ(m_window.OpenFile(path), nullptr);
    EXPECT_EQ(m_ui.messages, std::vector{Text(Str::LoadFileFailed, ToUtf8(path))});
    EXPECT_TRUE(CRecentFiles(m_configuration).Paths().isEmpty());
    EXPECT_TRUE(m_app.Documents().empty());
}

TEST_F(CWindowTest, SaveOfAnImportedPictureAsksForANativeName)
{
    ASSERT_NE(m_window.OpenFile(WritePicture(m_folder, "green.png")), nullptr);
    m_window.Action(CommandId::ObjectNew)->trigger();
    QString proposed;
    OnNextDialog<QFileDialog>([&proposed](QFileDialog& dialog) {
        proposed = QFileInfo(dialog.selectedFiles().value(0)).fileName();
        static_cast<QDialog&>(dialog).accept();
    });
    m_window.Action(CommandId::FileSave)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(proposed, QLatin1String("green.pxd"));
    EXPECT_FALSE(m_window.isWindowModified());
    EXPECT_EQ(m_app.Documents().front()->Title(), "green.pxd");
    ASSERT_NE(m_window.OpenFile(QString::fromStdString((m_folder.Path() / "green.pxd").string())), nullptr);
    EXPECT_EQ(m_app.Documents().back()->Canvas().objects.Count(), 2U);
}

TEST_F(CWindowTest, ClosingAModifiedDocumentAsksFirst)
{
    const auto answer = [](QMessageBox::StandardButton button) {
        OnNextDialog<QMessageBox>([button](QMessageBox& box) {
            EXPECT_EQ(box.text(), QLatin1String("Save changes to green.png?"));
            box.button(button)->click();
        });
    };
    CChildFrame* frame = m_window.OpenFile(WritePicture(m_folder, "green.png"));
    ASSERT_NE(frame, nullptr);
    m_window.Action(CommandId::ObjectNew)->trigger();

    answer(QMessageBox::Cancel);
    EXPECT_FALSE(m_window.close());
    EXPECT_EQ(m_app.Documents().size(), 1U);

    answer(QMessageBox::Discard);
    EXPECT_TRUE(frame->close());
    QTest::qWait(1);
    EXPECT_TRUE(m_app.Documents().empty());
    EXPECT_EQ(m_window.ActiveFrame(), nullptr);
    EXPECT_FALSE(m_window.Action(CommandId::FileSave)->isEnabled());
}

TEST_F(CWindowTest, ShortcutsAreUniqueAndIconsExist)
{
    std::map<QString, std::string> owners;
    for (const CommandRow& row : CommandTable()) {
        const std::string name(row.text);
        if (!row.icon.empty()) {
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/icons/%1.svg").arg(ToQString(row.icon)))) << name;
        }
        for (const QKeySequence& keys : m_window.Action(row.id)->shortcuts()) {
            ASSERT_FALSE(keys.isEmpty()) << name;
            const auto [owner, isNew] = owners.emplace(keys.toString(), name);
            EXPECT_TRUE(isNew) << name << " and " << owner->second << " share "
                               << keys.toString().toStdString();
        }
    }
}

TEST_F(CWindowTest, KeysOfTheCanvasMoveClearAndDelete)
{
    CChildFrame* frame = m_window.OpenFile(WritePicture(m_folder, "green.png"));
    ASSERT_NE(frame, nullptr);
    m_window.show();
    m_window.activateWindow();
    QTest::qWait(1);
    CPixoluneDoc& document = frame->Document();
    CCanvasWidget& canvas = frame->Canvas();
    canvas.setFocus();
    const CPicObject& object = *document.Canvas().objects.Top();
    document.Canvas().DeselectAll();
    QTest::keyClick(&canvas, Qt::Key_Right);
    EXPECT_EQ(object.x, 0) << "nothing is selected";
    EXPECT_EQ(document.History().PeekUndo(), nullptr);

    SelectAll(frame->View());
    document.Canvas().objects.Top()->SetSelected(true);
    QTest::keyClick(&canvas, Qt::Key_Right);
    QTest::keyClick(&canvas, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ((Point{object.x, object.y}), (Point{1, 10}));
    EXPECT_EQ(document.History().UndoItem().text, "Undo move object(s)");
    document.Undo();
    EXPECT_EQ((Point{object.x, object.y}), (Point{1, 0})) << "each key is a step of its own";

    QTest::keyClick(&canvas, Qt::Key_Escape);
    EXPECT_TRUE(frame->View().Selection().IsEmpty());
    EXPECT_EQ(document.History().UndoItem().text, "Undo Unselect All");
    EXPECT_EQ(document.Canvas().CountSelected(), 1) << "one thing at a time";
    QTest::keyClick(&canvas, Qt::Key_Escape);
    EXPECT_EQ(document.Canvas().CountSelected(), 0);

    document.Canvas().objects.Top()->SetSelected(true);
    document.NotifyObjectSelectionChanged();
    QCoreApplication::processEvents();
    QTest::keyClick(&canvas, Qt::Key_Delete);
    EXPECT_TRUE(document.Canvas().objects.IsEmpty());
}

TEST_F(CWindowTest, StatusBarTellsTheSizeOfWhatIsDrawn)
{
    CChildFrame* frame = m_window.OpenFile(WritePicture(m_folder, "green.png"));
    ASSERT_NE(frame, nullptr);
    ShowWindow();
    QWidget* port = frame->Canvas().viewport();
    const ViewGeometry& geometry = frame->View().Geometry();
    const auto at = [&](int x, int y) {
        const Point client = geometry.ToClient(Point{x, y});
        return QPoint(client.x, client.y);
    };
    const auto text = [&] { return ToUtf8(m_window.StatusBar().DraggedRectText()); };
    for (const ToolMode mode : {ToolMode::EllipticalSelection, ToolMode::Rectangle}) {
        frame->View().SetMode(mode);
        QTest::mousePress(port, Qt::LeftButton, {}, at(12, 20));
        QTest::mouseMove(port, at(5, 8));
        EXPECT_EQ(text(), "7 x 12 at x=5 y=8");
        QTest::mouseRelease(port, Qt::LeftButton, {}, at(5, 8));
        EXPECT_EQ(text(), "7 x 12 at x=5 y=8") << "the selection";
    }
    frame->View().SetMode(ToolMode::RectangularSelection);
    QTest::mousePress(port, Qt::LeftButton, {}, at(8, 14));
    QTest::mouseMove(port, at(18, 15));
    EXPECT_EQ(text(), "7 x 12 at x=15 y=9") << "the selection is dragged";
    QTest::keyClick(&frame->Canvas(), Qt::Key_Escape);
    EXPECT_EQ(text(), "7 x 12 at x=5 y=8");
    QTest::keyClick(&frame->Canvas(), Qt::Key_Escape);
    EXPECT_EQ(text(), "");
}
