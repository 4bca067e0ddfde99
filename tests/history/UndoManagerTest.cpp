// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/undo/UndoManager.h"

#include "history/TransformCommand.h"
#include "support/TestDocument.h"

namespace {

TEST(UndoManager, KeepsOneCommandMoreThanTheLimit)
{
    struct Row {
        int maxTimes;
        int recorded;
        size_t kept;
    };
    constexpr Row kCases[] = {{26, 26, 26}, {26, 27, 27}, {26, 30, 27}, {1, 5, 2}};
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.recorded);
        CUndoManager manager;
        const CEditCommand* newest = nullptr;
        for (int i = 0; i < row.recorded; ++i) {
            auto command = std::make_unique<CEditCommand>(Str::UndoMove);
            newest = command.get();
            manager.Record(std::move(command), row.maxTimes);
        }
        EXPECT_EQ(manager.UndoList().size(), row.kept);
        EXPECT_EQ(manager.PeekUndo(), newest);
    }
}

TEST(UndoManager, RedoListSurvivesANewActionAndItemsNameTheirCommand)
{
    TestDocument test;
    const Ref<CPicObject> object = test.Add(UniformDib(2, 2, 0xFF102030), 0, 0);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Can't &Undo");
    EXPECT_FALSE(test.doc.History().RedoItem().enabled);

    const auto paint = [&](TransformKind kind, uint32_t pixel) {
        auto command = std::make_unique<CTransformCommand>(kind);
        command->AddPicture(object->image, object->image->Exchange(UniformDib(2, 2, pixel)));
        test.doc.Record(std::move(command));
    };
    paint(TransformKind::Negative, 0xFF010101);
    EXPECT_TRUE(test.doc.Undo());
    EXPECT_EQ(test.doc.History().RedoItem().text, "Redo Negative");
    paint(TransformKind::Gray, 0xFF020202);
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo Gray");
    EXPECT_EQ(test.doc.History().RedoItem().text, "Redo Negative");
    EXPECT_TRUE(test.doc.Redo());
    EXPECT_EQ(PixelOf(object->image->Dib(), 0, 0), 0xFF010101u) << "redo runs on the changed document";
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo Negative");
    EXPECT_FALSE(test.doc.Redo());
}

} // namespace
