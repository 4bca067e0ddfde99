// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/NativeFile.h"

#include "support/TestDocument.h"
#include "support/TestFiles.h"
#include "support/TestPictures.h"

#include <cstring>
#include <random>

namespace {

using Bytes = std::vector<uint8_t>;

// A letter of two bytes straddles the 48 bytes that the file keeps of a name.
const std::string kNameStem(47, 'n');

CObjectCanvas SmallCanvas()
{
    CObjectCanvas canvas;
    canvas.width = 0x102;
    canvas.height = 3;
    canvas.parameter = 0x01020304;
    canvas.backgroundIndex = 5;
    canvas.frameDelay = 0x0607;
    canvas.transparentIndex = 8;
    canvas.graphicControlByte = 9;
    canvas.imageDescriptorByte = 10;
    canvas.objects.Append(ObjectAt(DibOf(2, 2, {0x11223344, 0x11223344, 0xFF000001, 0x80000002}), -2, 7,
                                   kNameStem + "\xC3\xA9"));
    canvas.objects.At(0)->locked = true;
    canvas.objects.At(0)->transparency = 200;
    canvas.objects.Append(MakeShared<CPicObject>());
    return canvas;
}

Bytes SmallFile()
{
    Bytes file = {'P', 'X', 'D', ' ', '2', '0', '0', '0', 4, 3, 2, 1, 5,  0, 0, 0, 2, 1,
                  0,   0,   3,   0,   0,   0,   0,   0,   7, 6, 8, 9, 10, 0, 2, 0, 0, 0};
    const auto add = [&](const Bytes& bytes) { file.insert(file.end(), bytes.begin(), bytes.end()); };
    add({2, 0, 0, 0, 2, 0, 0, 0});
    add(Bytes(47, 'n'));
    add({0xC3, 0xFE, 0xFF, 0xFF, 0xFF, 7, 0, 0, 0, 1, 1, 200, 0, 188, 0, 0, 0, 17, 0, 0, 0});
    add(Bytes(64 + 4, 0));
    add({205, 0, 0, 0, 0, 0, 0, 0});
    add({0xFF, 0x22, 0xFF, 0, 0xFF, 0x33, 0xFF, 0, 0xFF, 0x44, 1, 1, 2, 0xFF, 0x11, 1, 0xFF, 0x80});
    file[108] = 18;
    file[180] = 206;
    return file;
}

bool LoadsBytes(const Bytes& bytes, CObjectCanvas* canvas = nullptr)
{
    const CTemporaryFolder folder;
    CObjectCanvas own;
    CRecordingUserInterface ui;
    WriteContents(folder.File("a.pxd"), bytes);
    return LoadNativeFile(canvas != nullptr ? *canvas : own, folder.File("a.pxd"), ui);
}

TEST(NativeFile, WritesTheStatedBytes)
{
    const CTemporaryFolder folder;
    CRecordingUserInterface ui;
    ASSERT_TRUE(SaveNativeFile(SmallCanvas(), folder.File("some name.pxd"), ui));
    EXPECT_EQ(FileContents(folder.File("some name.pxd")), SmallFile());
    EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Saving file some name.pxd", ""}));
    EXPECT_EQ(ui.positions, (std::vector<int>{0, 50, 100}));

    ASSERT_TRUE(SaveNativeFile({}, folder.File("empty.pxd"), ui));
    EXPECT_EQ(FileContents(folder.File("empty.pxd")).size(), 36u);
    EXPECT_FALSE(SaveNativeFile({}, folder.Path() / "absent" / "a.pxd", ui));
}

TEST(NativeFile, ReadsEverythingBack)
{
    const CTemporaryFolder folder;
    CObjectCanvas canvas = SmallCanvas();
    canvas.objects.Append(ObjectAt(RandomDib(300, 41, 5), 1, 2));
    canvas.objects.Append(ObjectAt(UniformDib(1000, 3, 0x55555555), 1, 2));
    canvas.objects.Append(ObjectAt(CPackedDib::Create(0, 4, 32), 0, 0));
    CRecordingUserInterface ui;
    ASSERT_TRUE(SaveNativeFile(canvas, folder.File("a.pxd"), ui));
    ui = {};
    CObjectCanvas read;
    ASSERT_TRUE(LoadNativeFile(read, folder.File("a.pxd"), ui));
    EXPECT_EQ(ui.statusTexts, (std::vector<std::string>{"Reading file a.pxd", ""}));
    EXPECT_EQ(ui.positions, (std::vector<int>{0, 0, 20, 40, 60, 80}));
    ASSERT_EQ(read.objects.Count(), canvas.objects.Count());
    EXPECT_EQ(read.objects.At(0)->image->name, kNameStem + "\xC3");
    EXPECT_EQ(read.objects.At(2)->image->name, "object");
    for (size_t index = 0; index < read.objects.Count(); ++index) {
        if (canvas.objects.At(index)->image) {
            EXPECT_TRUE(
                SameBytes(read.objects.At(index)->image->Dib(), canvas.objects.At(index)->image->Dib()));
        }
    }
    // Everything else comes back too when a second file equals the first.
    ASSERT_TRUE(SaveNativeFile(read, folder.File("b.pxd"), ui));
    EXPECT_EQ(FileContents(folder.File("a.pxd")), FileContents(folder.File("b.pxd")));
}

TEST(NativeFile, RefusesWhatTheFileCannotHold)
{
    const Bytes good = SmallFile();
    ASSERT_TRUE(LoadsBytes(good));
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(LoadsBytes(Bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(length))))
            << length;

    struct Row {
        const char* name;
        size_t at;
        Bytes bytes;
    };
    const Row kRows[] = {
        {"magic", 3, {'_'}},
        {"version", 7, {'1'}},
        {"canvas beyond all pictures", 18, {1, 0, 0xFF, 0xFF}},
        {"more objects than file", 32, {0xFF, 0xFF, 0xFF, 0xFF}},
        {"negative width", 36, {0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0}},
        {"pixels beyond the file", 36, {0, 4, 0, 0}},
        {"width times height overflows", 36, {0, 0, 1, 0, 0, 0, 1, 0}},
        {"offset at the file's end", 104, {206, 0, 0, 0}},
        {"offset far outside", 104, {0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        Bytes bad = good;
        std::ranges::copy(row.bytes, bad.begin() + static_cast<ptrdiff_t>(row.at));
        CObjectCanvas canvas;
        EXPECT_FALSE(LoadsBytes(bad, &canvas));
        EXPECT_TRUE(canvas.objects.IsEmpty());
        EXPECT_EQ(canvas.width, 0);
    }
}

TEST(NativeFile, ObjectsMayShareFewPixels)
{
    // Records that all point to the same pixels.
    const auto fileOf = [](uint8_t count, int32_t side) {
        Bytes file = SmallFile();
        file.resize(36 + size_t{count} * 76);
        std::fill(file.begin() + 36, file.end(), uint8_t{0});
        file[32] = count;
        for (int index = 0; index < count; ++index) {
            uint8_t* record = file.data() + 36 + index * 76;
            const int32_t offset = 36 + count * 76;
            std::memcpy(record, &side, sizeof side);
            std::memcpy(record + 4, &side, sizeof side);
            std::memcpy(record + 68, &offset, sizeof offset);
        }
        for (int block = 0; block < 4 * side * side / 128; ++block)
            file.insert(file.end(), {0x81, 7});
        return file;
    };
    CObjectCanvas canvas;
    ASSERT_TRUE(LoadsBytes(fileOf(2, 128), &canvas));
    EXPECT_TRUE(SameBytes(canvas.objects.At(1)->image->Dib(), UniformDib(128, 128, 0x07070707)));
    EXPECT_FALSE(LoadsBytes(fileOf(200, 1024)));
}

TEST(NativeFile, SurvivesDamage)
{
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        Bytes file = SmallFile();
        for (size_t count = 1 + random() % 4; count > 0; --count)
            file[random() % file.size()] = static_cast<uint8_t>(random());
        CObjectCanvas canvas;
        const bool loaded = LoadsBytes(file, &canvas);
        EXPECT_EQ(canvas.objects.IsEmpty(), !loaded || file[32] == 0);
    }
}

} // namespace
