// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "app/ui/DocumentArea.h"
#include "canvas/TextSession.h"
#include "canvas/ui/CanvasWidget.h"
#include "ui/UiTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenuBar>
#include <QMessageBox>

namespace {

/// Two windows on one new document.
class CTwoWindowsTest : public CWindowTest {
protected:
    CTwoWindowsTest()
    {
        m_window.resize(900, 700);
        m_window.show();
        m_first = m_window.Show(*m_app.NewDocument());
        Run(CommandId::WindowNew);
        m_second = m_window.ActiveFrame();
    }

    void Run(CommandId id)
    {
        m_window.Action(id)->trigger();
        QTest::qWait(1);
    }

    void Answer(QMessageBox::StandardButton button)
    {
        OnNextDialog<QMessageBox>([this, button](QMessageBox& box) {
            ++m_questions;
            box.button(button)->click();
        });
    }

    CChildFrame* m_first;
    CChildFrame* m_second;
    int m_questions = 0;
};

} // namespace

TEST_F(CTwoWindowsTest, EachHasAViewOfItsOwnAndAllShowChanges)
{
    ASSERT_NE(m_first, m_second);
    ASSERT_EQ(&m_first->Document(), &m_second->Document());
    EXPECT_EQ(m_first->windowTitle(), QLatin1String("Untitled 1:1[*]"));
    EXPECT_EQ(m_second->windowTitle(), QLatin1String("Untitled 1:2[*]"));

    Run(CommandId::ViewZoom3);
    Run(CommandId::ToolPencil);
    Run(CommandId::EditSelectAll);
    EXPECT_EQ(m_second->View().Zoom(), 3);
    EXPECT_EQ(m_first->View().Zoom(), 1);
    EXPECT_EQ(m_first->View().Mode(), ToolMode::Default);
    EXPECT_TRUE(m_first->View().Selection().IsEmpty());

    Run(CommandId::WindowTileVertically);
    Run(CommandId::EditUnselectAll);
    Run(CommandId::ViewActualSize);
    Run(CommandId::TransformNegative);
    for (CChildFrame* frame : {m_first, m_second}) {
        const QImage shown = frame->Canvas().viewport()->grab().toImage();
        EXPECT_EQ(QColor(shown.pixel(shown.rect().center())), QColor(Qt::black))
            << frame->windowTitle().toStdString();
        EXPECT_TRUE(frame->isWindowModified());
    }
}

TEST_F(CTwoWindowsTest, BothShowWhatIsBeingDrawnAndWritten)
{
    Run(CommandId::WindowTileVertically);
    m_second->View().SetMode(ToolMode::Pencil);
    // A part of the document, wherever it stands: panels that are still being filled take room from the
    // windows.
    const auto part = [](CChildFrame& frame) {
        const Rect seen = frame.View().Geometry().ToClient(Rect{20, 20, 80, 80});
        return frame.Canvas().viewport()->grab({seen.left, seen.top, seen.Width(), seen.Height()}).toImage();
    };
    const auto shown = [&] {
        QTest::qWait(20);
        return std::pair(part(*m_first), part(*m_second));
    };
    const auto before = shown();
    MouseInput input;
    input.button = MouseButton::Left;
    for (const Point point : {Point{30, 30}, Point{60, 50}}) {
        input.client = m_second->View().Geometry().ToClient(point);
        point.x == 30 ? m_second->View().Press(input) : m_second->View().Move(input);
    }
    const auto drawn = shown();
    EXPECT_NE(drawn.first, before.first);
    EXPECT_NE(drawn.second, before.second);
    m_second->View().CancelDrag();
    EXPECT_EQ(shown().first, before.first);
    {
        CTextSession session(m_second->View(), Point{30, 30});
        TextStyle style = session.InitialStyle();
        style.text = "W";
        session.Preview(style);
        EXPECT_NE(shown().first, before.first);
    }
    EXPECT_EQ(shown().first, before.first);
}

TEST_F(CTwoWindowsTest, UndoReachesPastAClosedWindow)
{
    CPixoluneDoc& document = m_first->Document();
    Run(CommandId::EditSelectAll);
    Run(CommandId::EditInvertSelection);
    Run(CommandId::ObjectNew);
    Run(CommandId::WindowClose);
    EXPECT_EQ(m_questions, 0);
    EXPECT_EQ(m_window.ActiveFrame(), m_first);
    EXPECT_EQ(m_first->windowTitle(), QLatin1String("Untitled 1[*]"));
    for (int step = 0; step < 3; ++step)
        Run(CommandId::EditUndo);
    for (int step = 0; step < 3; ++step)
        Run(CommandId::EditRedo);
    EXPECT_EQ(document.Canvas().objects.Count(), 2U);
    EXPECT_TRUE(m_first->View().Selection().IsEmpty());
}

TEST_F(CTwoWindowsTest, OnlyTheLastWindowAsks)
{
    Run(CommandId::ObjectNew);
    // Both in one go: the first is still on its way out when the second is closed.
    m_second->close();
    Answer(QMessageBox::Cancel);
    EXPECT_FALSE(m_first->close());
    QTest::qWait(1);
    EXPECT_EQ(m_questions, 1);
    ASSERT_EQ(m_app.Documents().size(), 1U);

    Run(CommandId::WindowNew);
    Answer(QMessageBox::Discard);
    Run(CommandId::FileClose);
    EXPECT_EQ(m_questions, 2);
    EXPECT_TRUE(m_app.Documents().empty());
    EXPECT_EQ(m_window.ActiveFrame(), nullptr);
}

TEST_F(CTwoWindowsTest, CloseAllStopsAtTheDocumentThatStays)
{
    CChildFrame* third = m_window.Show(*m_app.NewDocument());
    Run(CommandId::ObjectNew);
    Answer(QMessageBox::Cancel);
    Run(CommandId::WindowCloseAll);
    EXPECT_EQ(m_questions, 1);
    ASSERT_EQ(m_app.Documents().size(), 1U);
    EXPECT_EQ(m_window.ActiveFrame(), third);
}

TEST_F(CTwoWindowsTest, ArrangementsFillTheAreaWithoutOverlap)
{
    m_window.Show(*m_app.NewDocument());
    for (const CommandId id : {CommandId::WindowTileHorizontally, CommandId::WindowTileVertically}) {
        Run(id);
        // The tiles follow the area.
        m_window.resize(m_window.width() + 60, m_window.height() + 40);
        QTest::qWait(20);
        EXPECT_FALSE(m_window.Action(CommandId::WindowTabs)->isChecked());
        int64_t area = 0;
        QRegion covered;
        for (CChildFrame* frame : {m_first, m_second, m_window.ActiveFrame()}) {
            const QRect rect = frame->geometry();
            EXPECT_FALSE(covered.intersects(rect));
            covered += rect;
            area += int64_t{rect.width()} * rect.height();
            EXPECT_EQ(rect.width() > rect.height(), id == CommandId::WindowTileHorizontally);
        }
        const QSize whole = m_window.findChild<CDocumentArea*>()->viewport()->size();
        EXPECT_EQ(area, int64_t{whole.width()} * whole.height());
    }
    Run(CommandId::WindowNext);
    EXPECT_EQ(m_window.ActiveFrame(), m_first);
    Run(CommandId::WindowPrevious);
    EXPECT_NE(m_window.ActiveFrame(), m_first);
    Run(CommandId::WindowTabs);
    EXPECT_TRUE(m_window.ActiveFrame()->isMaximized());
}

TEST_F(CTwoWindowsTest, MenuListsTheWindows)
{
    QMenu* menu = nullptr;
    for (QAction* action : m_window.menuBar()->actions()) {
        if (action->text().remove(QLatin1Char('&')) == QLatin1String("Window"))
            menu = action->menu();
    }
    ASSERT_NE(menu, nullptr);
    Q_EMIT menu->aboutToShow();
    QAction* entry = nullptr;
    for (QAction* action : menu->actions()) {
        if (action->text() == QLatin1String("&1  Untitled 1:1"))
            entry = action;
    }
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    QTest::qWait(1);
    EXPECT_EQ(m_window.ActiveFrame(), m_first);
}
