// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/ObjectOperations.h"

#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "document/StackingOperations.h"
#include "support/TestDocument.h"

#include <functional>

namespace {

/// A stack of 1 x 1 objects from letters: "a" plain, "A" selected, "!" behind it hidden.
void Build(TestDocument& test, const std::string& stack)
{
    for (const char letter : stack) {
        if (letter == '!')
            test.doc.Canvas().objects.Top()->visible = false;
        else
            test.Add(UniformDib(1, 1, 0xFFFFFFFF), 0, 0, letter < 'a');
    }
}

TEST(Stacking, MovesFlaggedObjectsAndSaysWhyNot)
{
    struct Row {
        const char* stack;
        StackingKind kind;
        const char* result;
        const char* message;
    };
    constexpr const char* kFront = "Your selected object(s) has/have been in front!";
    constexpr const char* kBack = "Your selected object(s) has/have been back!";
    constexpr Row kCases[] = {
        {"Aabb", StackingKind::MoveToFront, "2 3 4 1*", ""},
        {"Abcd", StackingKind::MoveForward, "2 1* 3 4", ""},
        {"aBCd", StackingKind::MoveToFront, "1 4 2* 3*", ""},
        {"AbCde", StackingKind::MoveToFront, "2 4 1* 5 3*", ""},
        {"AbCde", StackingKind::MoveForward, "2 1* 4 3* 5", ""},
        {"abCdE", StackingKind::MoveToFront, "1 2 3* 4 5*", kFront},
        {"abC", StackingKind::MoveToBack, "3* 1 2", ""},
        {"abCdE", StackingKind::MoveToBack, "3* 1 5* 2 4", ""},
        {"abCdE", StackingKind::MoveBackward, "1 3* 2 5* 4", ""},
        {"Ab", StackingKind::MoveBackward, "1* 2", kBack},
        {"aB!c", StackingKind::MoveToFront, "1 3 2*-", ""},
        {"ab", StackingKind::MoveToBack, "1 2", "A object must be selected at least!"},
        {"", StackingKind::MoveForward, "", "A object must be present at least!"},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(std::string(row.stack) + " " + std::to_string(static_cast<int>(row.kind)));
        TestDocument test;
        Build(test, row.stack);
        const std::string before = test.Stack();
        const bool moved = Restack(test.doc, row.kind);
        EXPECT_EQ(test.Stack(), row.result);
        EXPECT_EQ(moved, *row.message == '\0');
        EXPECT_EQ(test.doc.IsModified(), moved);
        EXPECT_EQ(test.ui.TakeMessages(),
                  moved ? std::vector<std::string>() : std::vector<std::string>{row.message});
        test.doc.Undo();
        EXPECT_EQ(test.Stack(), before);
    }
}

TEST(Objects, NewDuplicateDeleteAndTheirUndo)
{
    TestDocument test;
    const Ref<CPicObject> source = test.Add(RandomDib(3, 2, 1), 5, 6, true);
    source->transparency = 128;
    test.Add(UniformDib(1, 1, 0), 0, 0);
    ASSERT_TRUE(DuplicateObjects(test.doc));
    EXPECT_EQ(test.Stack(), "1 3* 2");
    const Ref<CPicObject> copy = test.doc.Canvas().objects.At(1);
    EXPECT_EQ(copy->transparency, 0);
    EXPECT_EQ(copy->Rectangle(), source->Rectangle());
    EXPECT_TRUE(SameBytes(copy->image->Dib(), source->image->Dib()));

    ASSERT_TRUE(NewObject(test.doc));
    EXPECT_EQ(test.Stack(), "1 3 2 4*");
    EXPECT_EQ(test.doc.Canvas().objects.Top()->Size(), (Size{40, 30}));
    test.doc.Canvas().objects.Bottom()->visible = false;
    SelectObjects(test.doc, test.doc.Canvas().objects);
    ASSERT_TRUE(DeleteObjects(test.doc)) << "hidden objects go too";
    EXPECT_EQ(test.Stack(), "");
    EXPECT_FALSE(DeleteObjects(test.doc));

    test.doc.Undo();
    EXPECT_EQ(test.Stack(), "1*- 3* 2* 4*");
    test.doc.Undo();
    EXPECT_EQ(test.Stack(), "1*- 3* 2*") << "undo clears no flag";
    test.doc.Redo();
    EXPECT_EQ(test.doc.Canvas().objects.Top()->image->name, "Obj - 4") << "the same object, no new number";
}

TEST(Objects, CombineAndMakeFrameShowTheSame)
{
    TestDocument test;
    test.Add(UniformDib(4, 4, 0xFF0000FF), 2, 3, true);
    test.Add(UniformDib(1, 1, 0xFF00FF00), 30, 20);
    test.Add(UniformDib(4, 4, 0x80FF0000), 4, 5, true);
    ASSERT_TRUE(CombineObjects(test.doc));
    EXPECT_EQ(test.Stack(), "4* 2") << "in the place of the lowest";
    const Ref<CPicObject> combined = test.doc.Canvas().objects.Bottom();
    EXPECT_EQ(combined->Rectangle(), (Rect{2, 3, 8, 9}));
    EXPECT_EQ(PixelOf(combined->image->Dib(), 0, 0), 0xFF0000FFu);
    EXPECT_EQ(PixelOf(combined->image->Dib(), 5, 0), 0u);

    ASSERT_TRUE(MakeFrame(test.doc));
    EXPECT_EQ(test.Stack(), "4- 2- 5*");
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo make frame as single object");
    test.doc.Undo();
    EXPECT_EQ(test.Stack(), "4* 2");
    test.doc.Redo();
    EXPECT_EQ(test.Stack(), "4*- 2- 5*");

    SelectObjects(test.doc, {});
    EXPECT_FALSE(CombineObjects(test.doc));
    EXPECT_EQ(test.ui.TakeMessages().back(), "The selection must have at least one visible object!");
}

TEST(Objects, TrimCutsWhatIsTransparentAndKeepsThePlace)
{
    TestDocument test;
    CPackedDib dib = CPackedDib::CreateTransparent(5, 4);
    dib.Row(1)[2 * 4 + 3] = 1;
    dib.Row(2)[3 * 4 + 3] = 255;
    const Ref<CPicObject> object = test.Add(dib.Duplicate(), 10, 10, true);
    ASSERT_TRUE(TrimObjects(test.doc));
    EXPECT_EQ(object->Rectangle(), (Rect{12, 11, 14, 13}));
    EXPECT_FALSE(TrimObjects(test.doc)) << "nothing left to cut";
    EXPECT_EQ(test.ui.TakeMessages().back(), "Selected object(s) has/have no excess transparent border!");
    test.doc.Undo();
    EXPECT_EQ(object->Rectangle(), (Rect{10, 10, 15, 14}));
    EXPECT_TRUE(SameBytes(object->image->Dib(), dib));
}

TEST(Placement, AlignsToTheCanvasOrToEachOther)
{
    struct Row {
        PlacementKind kind;
        bool both;
        Point first;
        Point second;
    };
    // Objects of 4 x 2 at (3, 5) and 7 x 3 at (20, 11) on 40 x 30; a hidden selected one at (1, 1).
    constexpr Row kCases[] = {
        {PlacementKind::AlignLeft, false, {0, 5}, {20, 11}},
        {PlacementKind::AlignRight, false, {36, 5}, {20, 11}},
        {PlacementKind::AlignTop, false, {3, 0}, {20, 11}},
        {PlacementKind::AlignBottom, false, {3, 28}, {20, 11}},
        {PlacementKind::AlignLeft, true, {1, 5}, {1, 11}},
        {PlacementKind::AlignRight, true, {23, 5}, {20, 11}},
        {PlacementKind::AlignBottom, true, {3, 12}, {20, 11}},
        {PlacementKind::CenterHorizontally, true, {18, 5}, {17, 11}},
        {PlacementKind::CenterBoth, false, {18, 14}, {20, 11}},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(static_cast<int>(row.kind));
        TestDocument test;
        const Ref<CPicObject> first = test.Add(UniformDib(4, 2, 0), 3, 5, true);
        const Ref<CPicObject> second = test.Add(UniformDib(7, 3, 0), 20, 11, row.both);
        const Ref<CPicObject> hidden = test.Add(UniformDib(1, 1, 0), 1, 1, row.both);
        hidden->visible = false;
        ASSERT_TRUE(AlignObjects(test.doc, row.kind));
        EXPECT_EQ((Point{first->x, first->y}), row.first);
        EXPECT_EQ((Point{second->x, second->y}), row.second);
        EXPECT_EQ(hidden->x, 1);
        EXPECT_FALSE(AlignObjects(test.doc, row.kind)) << "already there";
        EXPECT_EQ(test.doc.History().UndoList().size(), 1u);
        test.doc.Undo();
        EXPECT_EQ((Point{first->x, first->y}), (Point{3, 5}));
        first->locked = true;
        EXPECT_FALSE(AlignObjects(test.doc, row.kind));
        EXPECT_EQ(test.ui.TakeMessages().size(), 1u);
    }
}

TEST(Panel, OneCommandForSeveralObjectsAndNoneForNothing)
{
    TestDocument test;
    const Ref<CPicObject> a = test.Add(UniformDib(1, 1, 0), 0, 0);
    const Ref<CPicObject> b = test.Add(UniformDib(1, 1, 0), 0, 0);
    b->visible = false;
    const CObjectList both = test.doc.Canvas().objects;
    EXPECT_TRUE(SetVisible(test.doc, both, false));
    test.doc.Undo();
    EXPECT_TRUE(a->visible);
    EXPECT_FALSE(b->visible);
    EXPECT_FALSE(SetLocked(test.doc, both, false));
    EXPECT_TRUE(SetTransparency(test.doc, both, 7));
    const std::string stem(47, 'x');
    EXPECT_TRUE(RenameObject(test.doc, a, stem + "\xC3\xA4\xC3\xB6"));
    EXPECT_EQ(a->image->name, stem + "\xC3\xA4") << "48 characters, none cut in half";
    test.doc.Undo();
    EXPECT_EQ(a->image->name, "Obj - 1");
}

} // namespace
