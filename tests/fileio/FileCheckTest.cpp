// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/FileCheck.h"

#include "fileio/DocumentFiles.h"
#include "fileio/NativeSalvage.h"
#include "fileio/SaveAs.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct FileCheckTest : testing::Test {
    /// Three objects of different sizes, as the native file.
    Bytes ThreeObjects()
    {
        test.Add(RandomDib(7, 5, 1), 1, 2);
        test.Add(RandomDib(30, 20, 2), 3, 4);
        test.Add(RandomDib(4, 4, 3), 50, 60);
        EXPECT_TRUE(SaveDocument(test.doc, folder.File("a.pxd")));
        return FileContents(folder.File("a.pxd"));
    }
    std::optional<NativeSalvage> Salvage(const Bytes& bytes)
    {
        WriteContents(folder.File("a.pxd"), bytes);
        return SalvageNativeFile(folder.File("a.pxd"));
    }
    FileCheck Check(const std::string& name) { return CheckFile(folder.File(name), test.services); }

    CTemporaryFolder folder;
    TestDocument test;
};

constexpr size_t kHeader = 36;
constexpr size_t kRecord = 76;

TEST_F(FileCheckTest, WholeObjectsOfADamagedFileAreRead)
{
    const Bytes whole = ThreeObjects();
    const auto expectOnly = [&](const Bytes& bytes, const std::vector<size_t>& kept, const char* what) {
        SCOPED_TRACE(what);
        const std::optional<NativeSalvage> salvage = Salvage(bytes);
        ASSERT_TRUE(salvage);
        ASSERT_EQ(salvage->canvas.objects.Count(), kept.size());
        EXPECT_EQ(salvage->faults.empty(), kept.size() == 3);
        for (size_t index = 0; index < kept.size(); ++index) {
            const CPicObject& found = *salvage->canvas.objects.At(index);
            const CPicObject& original = *test.doc.Canvas().objects.At(kept[index]);
            EXPECT_TRUE(SameBytes(found.image->Dib(), original.image->Dib()));
            EXPECT_EQ(found.image->name, original.image->name);
            EXPECT_EQ(found.Rectangle(), original.Rectangle());
        }
    };
    expectOnly(whole, {0, 1, 2}, "nothing damaged");
    expectOnly(Bytes(whole.begin(), whole.end() - 1), {0, 1}, "last byte missing");
    Bytes bytes = whole;
    bytes[kHeader + kRecord + 3] = 0x7F;
    expectOnly(bytes, {0, 2}, "width of the second object");
    bytes = whole;
    bytes[kHeader + 71] = 0x7F;
    expectOnly(bytes, {1, 2}, "place of the first object");
    expectOnly(Bytes(whole.begin(), whole.begin() + kHeader + 2 * kRecord + 5), {}, "table cut");
    expectOnly(Bytes(whole.begin(), whole.begin() + 20), {}, "header cut");
    bytes = whole;
    bytes[19] = 0x7F;
    ASSERT_TRUE(Salvage(bytes));
    EXPECT_EQ(Salvage(bytes)->canvas.Size(), (Size{54, 64}));
    bytes[0] = 'Q';
    EXPECT_FALSE(Salvage(bytes));
}

TEST_F(FileCheckTest, ObjectsThatShareTheirPixelsAskForNoMore)
{
    Bytes bytes = ThreeObjects();
    std::copy_n(bytes.begin() + kHeader + kRecord, kRecord, bytes.begin() + kHeader + 2 * kRecord);
    bytes.resize(bytes.size() / 2 * 2);
    const std::optional<NativeSalvage> salvage = Salvage(bytes);
    ASSERT_TRUE(salvage);
    EXPECT_LE(salvage->canvas.objects.Count(), 3u);
    // 40,000 entries, each of one large flat picture whose packed rows all begin at the same place.
    bytes.resize(kHeader + kRecord * 40'000 + 100'000);
    bytes[32] = 0x40;
    bytes[33] = 0x9C;
    for (size_t index = 0; index < 40'000; ++index) {
        uint8_t* entry = bytes.data() + kHeader + kRecord * index;
        std::fill_n(entry, kRecord, uint8_t{0});
        entry[1] = entry[5] = 8; // 2048 x 2048
    }
    ASSERT_TRUE(Salvage(bytes));
    EXPECT_LE(Salvage(bytes)->canvas.objects.Count(), 4 + bytes.size() / (4 * 2048 * 32));
}

TEST_F(FileCheckTest, NamesTheFault)
{
    test.Add(RandomDib(20, 20, 4), 0, 0, true);
    for (const char* name : {"a.png", "a.jpg", "a.gif", "a.ani", "a.bmp"}) {
        SCOPED_TRACE(name);
        const auto path = folder.File(name);
        ASSERT_TRUE(SaveDocumentAs(test.doc, path, *FindSaveFormat(path), {}));
        FileCheck check = Check(name);
        EXPECT_TRUE(check.opens);
        EXPECT_TRUE(check.faults.empty()) << check.faults.front();
        EXPECT_EQ(check.objects, 1u);

        const Bytes whole = FileContents(path);
        for (const size_t size : {whole.size() - 2, whole.size() / 2, size_t{20}, size_t{3}}) {
            WriteContents(path, Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size)));
            EXPECT_FALSE(Check(name).faults.empty()) << size;
        }
        WriteContents(path, {});
        check = Check(name);
        EXPECT_FALSE(check.opens);
        EXPECT_EQ(check.faults.front(), "the file is empty");
    }
    EXPECT_EQ(Check("absent.png").faults, std::vector<std::string>{"there is no such file"});
}

TEST_F(FileCheckTest, ChecksumsOfPngChunksAreTested)
{
    test.Add(RandomDib(20, 20, 4), 0, 0, true);
    const auto path = folder.File("a.png");
    ASSERT_TRUE(SaveDocumentAs(test.doc, path, *FindSaveFormat(path), {}));
    Bytes bytes = FileContents(path);
    bytes[bytes.size() - 1] ^= 1;
    WriteContents(path, bytes);
    const FileCheck check = Check("a.png");
    ASSERT_EQ(check.faults.size(), 1u);
    EXPECT_NE(check.faults[0].find("checksum of the chunk IEND"), std::string::npos);
}

} // namespace
