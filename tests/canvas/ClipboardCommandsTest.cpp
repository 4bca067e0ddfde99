// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ClipboardCommands.h"

#include "canvas/PixoluneView.h"
#include "fileio/ClipboardStream.h"
#include "support/TestDocument.h"

namespace {

struct ClipboardTest : testing::Test {
    ClipboardTest() : view(test.doc) { view.SetClientSize({44, 34}); }
    TestDocument test;
    CPixoluneView view;
};

TEST_F(ClipboardTest, CopiesSelectedVisibleObjectsAndPastesThemWhereTheyCameFrom)
{
    const CPackedDib lower = RandomDib(5, 4, 1);
    const CPackedDib upper = RandomDib(3, 3, 2);
    test.Add(lower.Duplicate(), -1, 2, true)->transparency = 9;
    test.Add(UniformDib(2, 2, 0xFFFFFFFF), 0, 0, true)->visible = false;
    test.Add(upper.Duplicate(), 20, 10, true);
    ASSERT_TRUE(Copy(view));
    ASSERT_TRUE(Paste(view));
    EXPECT_EQ(test.Stack(), "1 2- 3 4* 5*");
    const CObjectList& objects = test.doc.Canvas().objects;
    EXPECT_TRUE(SameBytes(objects.At(3)->image->Dib(), lower));
    EXPECT_TRUE(SameBytes(objects.At(4)->image->Dib(), upper));
    EXPECT_EQ(objects.At(3)->transparency, 9);
    EXPECT_EQ(objects.At(3)->x, -1);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo paste");
}

TEST_F(ClipboardTest, PastesInTheMiddleOfWhatIsSeenWhenTheOldPlaceIsNot)
{
    test.Add(RandomDib(4, 4, 1), 0, 0, true);
    ASSERT_TRUE(Copy(view));
    TestDocument other;
    other.doc.Canvas().width = other.doc.Canvas().height = 500;
    AppServices services{other.settings, other.ui, test.clipboard, other.names};
    CPixoluneDoc target(services);
    target.Canvas().width = target.Canvas().height = 500;
    CPixoluneView scrolled(target);
    scrolled.SetClientSize({100, 60});
    scrolled.SetScroll({202, 102});
    ASSERT_TRUE(Paste(scrolled));
    EXPECT_EQ(target.Canvas().objects.Top()->Rectangle(), (Rect{248, 128, 252, 132}));
}

TEST_F(ClipboardTest, SelectionCutsAndClearsOnlyItsPart)
{
    const Ref<CPicObject> object = test.Add(UniformDib(6, 6, 0xFF123456), 2, 2, true);
    view.SetSelection(CRegion({0, 0, 4, 5}));
    ASSERT_TRUE(Cut(view));
    EXPECT_EQ(test.ui.questions.back(), "Are you sure clear the selection?");
    EXPECT_EQ(PixelOf(object->image->Dib(), 1, 2) >> 24, 0u);
    EXPECT_EQ(PixelOf(object->image->Dib(), 2, 2), 0xFF123456u);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo cut");
    ASSERT_TRUE(Paste(view));
    EXPECT_EQ(test.doc.Canvas().objects.Top()->Rectangle(), (Rect{2, 2, 4, 5}));

    test.doc.Undo();
    test.doc.Undo();
    EXPECT_EQ(PixelOf(object->image->Dib(), 1, 2), 0xFF123456u);
    view.SetSelection(CRegion({30, 20, 40, 30}));
    EXPECT_FALSE(Delete(view));
    EXPECT_EQ(test.ui.TakeMessages(),
              std::vector<std::string>{"Your selected  proportion is empty or transparent!"});
    view.SetSelection(CRegion());
    test.ui.answer = false;
    EXPECT_FALSE(Delete(view));
    EXPECT_EQ(test.Stack(), "1*");
    test.ui.answer = true;
    EXPECT_TRUE(Delete(view));
    EXPECT_EQ(test.Stack(), "");
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo delete");
}

TEST_F(ClipboardTest, CopyMergedTakesTheFrame)
{
    test.Add(UniformDib(40, 30, 0xFF0000FF), 0, 0);
    test.Add(UniformDib(2, 2, 0xFFFF0000), 10, 10);
    view.SetSelection(CRegion({9, 9, 12, 12}));
    ASSERT_TRUE(CopyMerged(view));
    const auto pasted = ParseClipboardStream(*test.clipboard.PrivateStream());
    ASSERT_TRUE(pasted && pasted->size() == 1);
    EXPECT_EQ(PixelOf(pasted->front().dib, 0, 0), 0xFF0000FFu);
    EXPECT_EQ(PixelOf(pasted->front().dib, 1, 1), 0xFFFF0000u);
    EXPECT_TRUE(SameBytes(test.clipboard.Picture(), pasted->front().dib));
}

TEST_F(ClipboardTest, AClipboardThatLiesChangesNothing)
{
    for (const size_t kept : {size_t{0}, size_t{3}, size_t{11}, size_t{20}, size_t{40}}) {
        const CPackedDib dib = RandomDib(4, 4, 5);
        const CopiedPicture picture{dib, 0};
        std::vector<uint8_t> stream = BuildClipboardStream({&picture, 1});
        stream.resize(kept);
        test.clipboard.Offer({[stream] { return stream; }, {}, {}});
        EXPECT_FALSE(Paste(view)) << kept;
    }
    EXPECT_TRUE(test.doc.Canvas().objects.IsEmpty());
    EXPECT_FALSE(test.doc.IsModified());
}

} // namespace
