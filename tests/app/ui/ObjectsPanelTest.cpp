// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ObjectsPanel.h"

#include "app/ui/ChildFrame.h"
#include "app/ui/ObjectDelegate.h"
#include "app/ui/ObjectListModel.h"
#include "fileio/DocumentFiles.h"
#include "ui/UiTest.h"

#include <QMimeData>
#include <QSlider>

namespace {

/// A window on a document with three objects, "a" at the bottom, and its panel.
class CObjectsPanelTest : public CWindowTest {
protected:
    CObjectsPanelTest()
    {
        m_frame = m_window.Show(*m_app.NewDocument());
        CObjectCanvas canvas;
        canvas.width = canvas.height = 60;
        for (const char* name : {"a", "b", "c"})
            canvas.objects.Append(ObjectAt(UniformDib(20, 20, 0xFF336699), 0, 0, name));
        Document().Adopt(std::move(canvas));
        ShowWindow();
        m_list = m_window.findChild<CObjectsList*>();
    }

    CPixoluneDoc& Document() { return m_frame->Document(); }
    [[nodiscard]] const CPicObject& Object(size_t index) { return *Document().Canvas().objects.At(index); }
    [[nodiscard]] std::string Names()
    {
        std::string names;
        for (const Ref<CPicObject>& object : Document().Canvas().objects)
            names += object->image->name;
        return names;
    }
    [[nodiscard]] ObjectRowLayout LayoutOf(int row) const
    {
        const auto* delegate = qobject_cast<CObjectDelegate*>(m_list->itemDelegate());
        return delegate->LayOut(m_list->visualRect(m_list->model()->index(row, 0)), m_list->fontMetrics());
    }
    void Click(const QRect& part, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, keys, part.center());
    }
    void Drop(const QModelIndexList& rows, int before)
    {
        const std::unique_ptr<QMimeData> data(m_list->model()->mimeData(rows));
        m_list->model()->dropMimeData(data.get(), Qt::MoveAction, before, 0, {});
    }

    CChildFrame* m_frame;
    CObjectsList* m_list;
};

} // namespace

TEST_F(CObjectsPanelTest, RowsAndDocumentShareTheSelection)
{
    ASSERT_NE(m_list, nullptr);
    Click(LayoutOf(0).name);
    EXPECT_TRUE(Object(2).IsSelected()) << "the topmost object has the first row";
    Click(LayoutOf(2).name, Qt::ControlModifier);
    EXPECT_TRUE(Object(0).IsSelected());
    EXPECT_EQ(Document().Canvas().CountSelected(), 2);
    Document().Canvas().DeselectAll();
    Document().NotifyObjectSelectionChanged();
    EXPECT_TRUE(m_list->selectionModel()->selectedIndexes().isEmpty());
    EXPECT_EQ(Document().History().PeekUndo(), nullptr) << "selecting in the list is not recorded";
}

TEST_F(CObjectsPanelTest, IconsChangeTheirRowOrTheWholeSelectionWithOneCommand)
{
    Click(LayoutOf(0).eye);
    EXPECT_FALSE(Object(2).visible);
    EXPECT_FALSE(Object(2).IsSelected()) << "an icon does not select";
    Click(LayoutOf(1).name);
    Click(LayoutOf(2).name, Qt::ShiftModifier);
    Click(LayoutOf(1).lock);
    EXPECT_TRUE(Object(0).locked && Object(1).locked && !Object(2).locked);
    EXPECT_EQ(Document().History().UndoList().size(), 2U);

    m_window.findChild<QSlider*>()->setValue(155);
    EXPECT_EQ(Object(0).transparency, 100);
    EXPECT_EQ(Object(1).transparency, 100);
    EXPECT_EQ(Document().History().UndoList().size(), 3U);
    Document().Undo();
    EXPECT_EQ(m_window.findChild<QSlider*>()->value(), 255) << "the slider follows undo";
    EXPECT_EQ(Document().History().UndoList().size(), 2U);
}

TEST_F(CObjectsPanelTest, DraggedRowsStandWhereTheyWereDropped)
{
    const auto rows = [this](std::initializer_list<int> numbers) {
        QModelIndexList list;
        for (const int row : numbers)
            list.append(m_list->model()->index(row, 0));
        return list;
    };
    const struct {
        const char* name;
        QModelIndexList rows;
        int before;
        const char* order;
        const char* command;
    } cases[] = {
        {"bottom to top", rows({2}), 0, "bca", "Undo move forward"},
        {"top to bottom", rows({0}), 3, "cab", "Undo move backward"},
        {"between the others", rows({0}), 2, "acb", "Undo move backward"},
        {"two apart, together", rows({0, 2}), 2, "acb", nullptr},
        {"on its own place", rows({1}), 2, "abc", nullptr},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const std::string before = Names();
        Drop(row.rows, row.before);
        EXPECT_EQ(Names(), row.order);
        if (row.command) {
            EXPECT_EQ(Document().History().UndoItem().text, row.command);
        }
        if (Names() != before) {
            Document().Undo();
            EXPECT_EQ(Names(), "abc");
        }
    }
}

TEST_F(CObjectsPanelTest, RenameInPlaceIsOneCommand)
{
    m_list->model()->setData(m_list->model()->index(1, 0), QString(60, QLatin1Char('x')), Qt::EditRole);
    EXPECT_EQ(Object(1).image->name, std::string(48, 'x')) << "names hold 48 characters";
    EXPECT_EQ(Document().History().UndoItem().text, "Undo modify object's properties");
    Document().Undo();
    EXPECT_EQ(Object(1).image->name, "b");
}

TEST_F(CObjectsPanelTest, HiddenObjectsCanBeLeftOutAndAClosedDocumentLeavesNoRows)
{
    CObjectListModel model;
    model.SetDocument(&Document());
    model.SetShowsAll(false);
    Click(LayoutOf(0).eye);
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(m_list->model()->rowCount(), 3);
    model.SetDocument(nullptr);

    Document().SetModified(false);
    m_frame->close();
    QTest::qWait(1);
    EXPECT_EQ(m_list->model()->rowCount(), 0);
}

TEST_F(CObjectsPanelTest, ThumbnailsAreMadeOnceAndFollowTheirPictures)
{
    auto& model = *qobject_cast<CObjectListModel*>(m_list->model());
    const auto thumbnail = [&](int row) { return model.Thumbnail(row, 16); };
    const QImage first = thumbnail(0);
    EXPECT_EQ(first.size(), QSize(16, 16));
    EXPECT_EQ(thumbnail(0).constBits(), first.constBits()) << "not made again";
    EXPECT_EQ(model.Thumbnail(0, 8).size(), QSize(8, 8));
    const QImage second = thumbnail(1);
    CPackedDib& dib = Document().Canvas().objects.At(2)->image->MutableDib();
    std::ranges::fill(dib.Bits(), uint8_t{255});
    Document().NotifyFrameChanged({0, 0, 1, 1});
    EXPECT_NE(thumbnail(0), first) << "painted in place";
    Drop({m_list->model()->index(0, 0)}, 3);
    EXPECT_EQ(thumbnail(0), second) << "rows go with their objects";
}

TEST_F(CObjectsPanelTest, AFailedAddShowsWhatIsThere)
{
    const std::filesystem::path good = m_folder.File("good.png");
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(QString::fromStdString(good.string())));
    const std::filesystem::path paths[] = {good, m_folder.File("missing.png")};
    EXPECT_FALSE(AddFiles(Document(), paths, AddKind::ImageFiles));
    EXPECT_EQ(m_list->model()->rowCount(), 4);
    EXPECT_EQ(m_list->selectionModel()->selectedIndexes().size(), 1);
}
