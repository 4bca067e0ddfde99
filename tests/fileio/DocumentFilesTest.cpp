// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/DocumentFiles.h"

#include "platform/codec/PngWriter.h"
#include "support/TestDocument.h"

#include <fstream>

namespace {

struct DocumentFilesTest : testing::Test {
    std::filesystem::path WritePicture(const std::string& name, const CPackedDib& dib)
    {
        EXPECT_TRUE(WritePng(folder.File(name), PngPictureOf(ViewOf(dib))));
        return folder.File(name);
    }
    std::filesystem::path WriteBroken(const std::string& name)
    {
        std::ofstream(folder.File(name)) << "no picture";
        return folder.File(name);
    }
    CTemporaryFolder folder;
    TestDocument test;
};

TEST_F(DocumentFilesTest, OpensByExtensionInAnyCaseAndNamesTheObject)
{
    const CPackedDib picture = RandomDib(7, 5, 1);
    ASSERT_TRUE(OpenIntoDocument(test.doc, WritePicture("a.PnG", picture)));
    EXPECT_EQ(test.Stack(), "1*");
    EXPECT_EQ(test.doc.Canvas().Size(), (Size{7, 5}));
    EXPECT_TRUE(SameBytes(test.doc.Canvas().objects.Top()->image->Dib(), picture));
    EXPECT_EQ(test.ui.statusTexts, (std::vector<std::string>{"Reading file a.PnG", ""}));
    EXPECT_FALSE(test.doc.IsModified());
    EXPECT_EQ(test.doc.Title(), "a.PnG");
}

TEST_F(DocumentFilesTest, AFailedOpenChangesNothingAndUsesNoName)
{
    test.Add(RandomDib(1, 1, 1), 0, 0);
    for (const std::string name : {"broken.png", "broken.pxd", "nodot", "text.txt", "absent.png"}) {
        const std::filesystem::path path = name == "absent.png" ? folder.File(name) : WriteBroken(name);
        EXPECT_FALSE(OpenIntoDocument(test.doc, path));
        EXPECT_EQ(test.ui.TakeMessages(), std::vector<std::string>{"Load file " + path.string() + " fail!"});
    }
    EXPECT_EQ(test.Stack(), "1");
    EXPECT_EQ(test.names.Next(), "Obj - 2");
}

TEST_F(DocumentFilesTest, SavesAndOpensTheSameDocument)
{
    test.Add(RandomDib(7, 5, 1), -3, 4)->transparency = 20;
    test.Add(RandomDib(2, 9, 2), 11, 0)->visible = false;
    test.doc.SetModified(true);
    ASSERT_TRUE(SaveDocument(test.doc, folder.File("saved.pxd")));
    EXPECT_FALSE(test.doc.IsModified());
    TestDocument other;
    ASSERT_TRUE(OpenIntoDocument(other.doc, folder.File("saved.pxd")));
    EXPECT_EQ(other.Stack(), "1 2*-");
    for (size_t i = 0; i < 2; ++i) {
        const CPicObject& a = *test.doc.Canvas().objects.At(i);
        const CPicObject& b = *other.doc.Canvas().objects.At(i);
        EXPECT_TRUE(SameBytes(a.image->Dib(), b.image->Dib()));
        EXPECT_EQ(a.Rectangle(), b.Rectangle());
        EXPECT_EQ(a.transparency, b.transparency);
    }
    test.doc.SetModified(true);
    EXPECT_FALSE(SaveDocument(test.doc, folder.File("no folder/x.pxd")));
    EXPECT_TRUE(test.doc.IsModified());
    EXPECT_EQ(test.ui.TakeMessages().size(), 1u);
}

TEST_F(DocumentFilesTest, AddingStopsAtTheFirstFailureAndKeepsWhatCameBefore)
{
    const auto first = WritePicture("1.png", RandomDib(2, 2, 1));
    const auto third = WritePicture("3.png", RandomDib(2, 2, 3));
    test.Add(RandomDib(1, 1, 1), 0, 0, true);
    const std::filesystem::path failing[] = {first, WriteBroken("2.png"), third};
    EXPECT_FALSE(AddFiles(test.doc, failing, AddKind::ImageFiles));
    EXPECT_EQ(test.Stack(), "1 2*");
    EXPECT_FALSE(test.doc.History().UndoItem().enabled);
    const std::filesystem::path good[] = {third, first};
    EXPECT_TRUE(AddFiles(test.doc, good, AddKind::ImageFiles));
    EXPECT_EQ(test.Stack(), "1 2 3* 4*");
    EXPECT_EQ(test.doc.History().UndoItem().text, "Undo Add image file(s)");
    test.doc.Undo();
    EXPECT_EQ(test.Stack(), "1 2*");
}

} // namespace
