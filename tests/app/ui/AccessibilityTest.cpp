// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "app/ui/StatusBar.h"
#include "canvas/ui/CanvasWidget.h"
#include "document/ObjectOperations.h"
#include "document/PanelOperations.h"
#include "ui/UiTest.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QToolBar>

namespace {

class CAccessibilityTest : public CWindowTest {
protected:
    /// A shown window with a document.
    void Open(CMainFrame& window)
    {
        window.resize(1400, 1000);
        ShowWithPanels(window);
        m_frame = window.Show(*m_app.NewDocument());
        QTest::qWait(20);
    }

    CChildFrame* m_frame = nullptr;
};

} // namespace

TEST_F(CAccessibilityTest, CanvasTellsItsObjectsAndTheirStates)
{
    Open(m_window);
    CPixoluneDoc& document = m_frame->Document();
    ASSERT_TRUE(NewObject(document));
    CObjectList top;
    top.Append(document.Canvas().objects.At(1));
    SetLocked(document, top, true);
    QAccessibleInterface* canvas = QAccessible::queryAccessibleInterface(&m_frame->Canvas());
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(canvas->role(), QAccessible::Canvas);
    EXPECT_EQ(canvas->text(QAccessible::Name), QLatin1String("Untitled 1"));
    EXPECT_EQ(canvas->text(QAccessible::Description),
              QLatin1String("640 x 480 pixels, shown at 100 percent, 2 object(s), 1 selected"));
    ASSERT_EQ(canvas->childCount(), 2);
    QAccessibleInterface* object = canvas->child(1);
    EXPECT_EQ(object->text(QAccessible::Name), QLatin1String("Obj - 2, locked"));
    EXPECT_TRUE(object->state().selected && object->state().readOnly);
    EXPECT_EQ(canvas->indexOfChild(object), 1);
    EXPECT_EQ(object->rect().size(), QSize(640, 480));
    const QPoint middle = object->rect().center();
    EXPECT_EQ(canvas->childAt(middle.x(), middle.y()), object);

    SetVisible(document, top, false);
    EXPECT_TRUE(object->state().invisible);
    EXPECT_EQ(canvas->childAt(middle.x(), middle.y()), canvas->child(0));
    auto* rows = m_window.findChild<QAbstractItemView*>();
    EXPECT_EQ(rows->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
              QLatin1String("Obj - 2, hidden, locked"));
}

TEST_F(CAccessibilityTest, ArrowKeysWalkAToolBarAndTabLeavesIt)
{
    Open(m_window);
    m_window.activateWindow();
    auto* bar = m_window.findChild<QToolBar*>(QStringLiteral("DrawingBar"));
    QWidget* first = bar->widgetForAction(m_window.Action(CommandId::ToolDefault));
    QWidget* second = bar->widgetForAction(m_window.Action(CommandId::ToolRectangularSelection));
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Down);
    EXPECT_EQ(m_window.focusWidget(), second);
    QTest::keyClick(second, Qt::Key_Space);
    EXPECT_EQ(m_frame->View().Mode(), ToolMode::RectangularSelection);
    QTest::keyClick(second, Qt::Key_Tab);
    EXPECT_FALSE(bar->isAncestorOf(m_window.focusWidget()));
}

TEST_F(CAccessibilityTest, StatusBarTellsTheSizeOfBandAndSelection)
{
    Open(m_window);
    m_window.Action(CommandId::ToolRectangularSelection)->trigger();
    QWidget* viewport = m_frame->Canvas().viewport();
    const QPoint middle = viewport->rect().center();
    QTest::mousePress(viewport, Qt::LeftButton, {}, middle);
    QTest::mouseMove(viewport, middle + QPoint(70, 40));
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().startsWith(QLatin1String("70 x 40 at x=")));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, middle + QPoint(60, 30));
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().startsWith(QLatin1String("60 x 30 at x=")));
    QTest::qWait(1);
    m_window.Action(CommandId::EditUnselectAll)->trigger();
    EXPECT_TRUE(m_window.StatusBar().DraggedRectText().isEmpty());
}
