// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "model/Compositing.h"
#include "ui/UiTest.h"

#include <QAction>

namespace {

/// Drags of the pointer, during which commands run.
class CUnfinishedDragTest : public CWindowTest {
protected:
    CUnfinishedDragTest() { m_window.show(); }

    void Start(ToolMode mode)
    {
        m_frame = m_window.Show(*m_app.NewDocument());
        View().SetMode(mode);
    }
    CPixoluneDoc& Document() { return m_frame->Document(); }
    CPixoluneView& View() { return m_frame->View(); }
    void Run(CommandId id)
    {
        QTest::qWait(1);
        m_window.Action(id)->trigger();
    }
    [[nodiscard]] MouseInput At(Point point)
    {
        MouseInput input;
        input.client = View().Geometry().ToClient(point);
        input.button = MouseButton::Left;
        return input;
    }
    void Drag()
    {
        View().Press(At({20, 20}));
        View().Move(At({60, 30}));
        View().Move(At({80, 70}));
    }
    void Click(Point point)
    {
        View().Press(At(point));
        View().Release(At(point));
    }
    [[nodiscard]] std::vector<std::string> Steps()
    {
        std::vector<std::string> names;
        for (const auto& command : Document().History().UndoList())
            names.push_back(command->Name());
        return names;
    }

    CChildFrame* m_frame = nullptr;
};

} // namespace

TEST_F(CUnfinishedDragTest, EndsWhereThePointerIsBeforeACommand)
{
    for (int mode = 0; mode < kToolModeCount; ++mode) {
        const auto tool = static_cast<ToolMode>(mode);
        // A press of the text tool opens its dialog; a polygon is drawn with clicks.
        if (tool == ToolMode::Text || tool == ToolMode::Polygon)
            continue;
        SCOPED_TRACE(mode);
        std::vector<std::string> steps[2];
        CPackedDib frames[2];
        Rect selected[2];
        for (const int isLate : {0, 1}) {
            Start(tool);
            Drag();
            if (!isLate)
                View().Release(At({80, 70}));
            Run(CommandId::TransformNegative);
            View().Move(At({10, 90}));
            View().Release(At({10, 90}));
            steps[isLate] = Steps();
            frames[isLate] = Flatten(Document().Canvas());
            selected[isLate] = View().Selection().Bounds();
        }
        EXPECT_EQ(steps[0], steps[1]);
        EXPECT_EQ(steps[1].back(), "Undo Negative");
        EXPECT_TRUE(SameBytes(frames[0], frames[1]));
        EXPECT_EQ(selected[0], selected[1]);
    }
}

TEST_F(CUnfinishedDragTest, IsGivenUpByUndoAndByAnotherTool)
{
    for (const ToolMode mode : {ToolMode::Pencil, ToolMode::Rectangle, ToolMode::LassoSelection}) {
        SCOPED_TRACE(static_cast<int>(mode));
        Start(mode);
        const CPackedDib before = Flatten(Document().Canvas());
        Drag();
        Run(CommandId::ToolErase);
        EXPECT_TRUE(Steps().empty());
        View().Release(At({80, 70}));
        EXPECT_TRUE(Steps().empty());

        View().SetMode(mode);
        Drag();
        QTest::qWait(1);
        EXPECT_TRUE(m_window.Action(CommandId::EditUndo)->isEnabled()) << "with nothing else to undo";
        Run(CommandId::EditUndo);
        EXPECT_TRUE(Steps().empty());
        EXPECT_TRUE(SameBytes(Flatten(Document().Canvas()), before));
        EXPECT_TRUE(View().Selection().IsEmpty());
    }
}

TEST_F(CUnfinishedDragTest, APolygonWaitsForCommandsButNotForUndo)
{
    Start(ToolMode::Polygon);
    Click({20, 20});
    Click({80, 20});
    Run(CommandId::TransformNegative);
    Click({50, 70});
    View().Key(ToolKey::Enter);
    EXPECT_EQ(Steps(), (std::vector<std::string>{"Undo Negative", "Undo paint polygon"}));

    Click({20, 20});
    Click({80, 20});
    Run(CommandId::EditUndo);
    EXPECT_FALSE(View().IsBusy());
    EXPECT_EQ(Steps().size(), 2U) << "nothing but the new polygon";
}
