// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimatedCursorReader.h"
#include "fileio/AnimatedCursorWriter.h"
#include "fileio/IconReader.h"
#include "fileio/IconWriter.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Joined(std::initializer_list<Bytes> parts)
{
    Bytes file;
    for (const Bytes& part : parts)
        file.insert(file.end(), part.begin(), part.end());
    return file;
}

/// 2 x 1 with 1 bit: blue, and green under the mask.
const Bytes kImage = Joined({{40, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0, 1, 0, 1, 0},
                             Bytes(24, 0),
                             {255, 0, 0, 0, 0, 255, 0, 0, 0x40, 0, 0, 0, 0x40, 0, 0, 0}});
const Bytes kEntry(16, 0xEE);

Bytes Chunk(const std::string& name, const Bytes& data)
{
    const auto size = static_cast<uint8_t>(data.size());
    return Joined({Bytes(name.begin(), name.end()), {size, 0, 0, 0}, data});
}

Bytes Animation(uint8_t frames, std::initializer_list<Bytes> chunks)
{
    Bytes header(36, 0);
    header[0] = 36;
    header[4] = frames;
    header[28] = 3;
    return Joined({Chunk("RIFF", {}), {'A', 'C', 'O', 'N'}, Chunk("anih", header), Joined(chunks)});
}

struct IconTest : testing::Test {
    bool Load(const Bytes& bytes, bool isAnimation = false)
    {
        canvas = {};
        WriteContents(folder.File("file"), bytes);
        return isAnimation ? LoadAnimatedCursorFile(canvas, folder.File("file"), &ui)
                           : LoadIconFile(canvas, folder.File("file"), &ui);
    }
    CTemporaryFolder folder;
    CRecordingUserInterface ui;
    CObjectCanvas canvas;
};

TEST_F(IconTest, ReadsImagesInOrderAndAppliesTheirMasks)
{
    const Bytes file = Joined({{0, 0, 2, 0, 2, 0}, kEntry, kEntry, kImage, kImage});
    ASSERT_TRUE(Load(file));
    ASSERT_EQ(canvas.objects.Count(), 2u);
    EXPECT_EQ(canvas.Size(), (Size{2, 1}));
    EXPECT_TRUE(SameBytes(canvas.objects.At(1)->image->Dib(), DibOf(2, 1, {0xFF0000FF, 0x0000FF00})));
    EXPECT_EQ(ui.positions, (std::vector<int>{0, 50, 100}));
    for (size_t length = 0; length < file.size(); ++length) {
        EXPECT_FALSE(Load(Bytes(file.begin(), file.begin() + static_cast<ptrdiff_t>(length)))) << length;
        EXPECT_TRUE(canvas.objects.IsEmpty());
    }
}

TEST_F(IconTest, RefusesWhatIsNoIcon)
{
    struct Row {
        const char* name;
        size_t at;
        Bytes bytes;
    };
    const Row kRows[] = {{"type", 2, {3}},
                         {"no images", 4, {0}},
                         {"width beyond the file", 26, {0, 0, 1, 0}},
                         {"negative width", 26, {0xFE, 0xFF, 0xFF, 0xFF}},
                         {"negative height", 30, {0xFE, 0xFF, 0xFF, 0xFF}},
                         {"odd depth", 36, {3}},
                         {"run-length coded", 38, {1}},
                         {"palette beyond the file", 54, {0xFF, 0xFF, 0xFF, 0x7F}}};
    for (const Row& row : kRows) {
        Bytes file = Joined({{0, 0, 1, 0, 1, 0}, kEntry, kImage});
        std::ranges::copy(row.bytes, file.begin() + static_cast<ptrdiff_t>(row.at));
        EXPECT_FALSE(Load(file)) << row.name;
    }
}

TEST_F(IconTest, ReadsAnimations)
{
    const Bytes frame = Chunk("icon", Joined({{0, 0, 2, 0, 1, 0}, kEntry, kImage}));
    struct Row {
        const char* name;
        Bytes file;
        int delay; ///< -1: refused
    };
    const Row kRows[] = {
        {"rate of the header", Animation(1, {frame}), 5},
        {"rate chunk", Animation(2, {Chunk("rate", {6, 0, 0, 0, 9, 0, 0, 0}), frame, frame}), 10},
        {"texts of odd length", Animation(1, {Chunk("INAM", {1, 2, 3}), {0}, frame}), 5},
        {"steps and unknown chunks", Animation(1, {Chunk("seq ", Bytes(8)), Chunk("JUNK", Bytes(4)), frame}),
         5},
        {"frame missing", Animation(2, {frame}), -1},
        {"frame too many", Animation(1, {frame, frame}), -1},
        {"no frames", Animation(0, {}), -1},
        {"cut in a frame", Animation(1, {Bytes(frame.begin(), frame.end() - 1)}), -1},
        {"count of no meaning in a frame",
         Animation(1, {Chunk("icon", Joined({{9, 9, 9, 9, 0xFF, 0xFF}, kEntry, kImage}))}), 5},
        {"several images in a frame",
         Animation(2, {Chunk("icon", Joined({{0, 0, 2, 0, 2, 0}, kEntry, kEntry, kImage, kImage})), frame}),
         5},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Load(row.file, true), row.delay >= 0) << row.name;
        EXPECT_EQ(canvas.objects.IsEmpty(), row.delay < 0) << row.name;
        EXPECT_EQ(canvas.frameDelay, std::max(row.delay, 0)) << row.name;
    }
}

TEST_F(IconTest, WritesWhatItReads)
{
    CObjectCanvas source;
    source.width = 3;
    source.height = 2;
    source.frameDelay = 7;
    source.objects.Append(
        ObjectAt(DibOf(3, 2, {0xFF010203, 0x80040506, 0x7F070809, 0, 0xFF0A0B0C, 0xFF0D0E0F}), 0, 0));
    source.objects.Append(ObjectAt(DibOf(1, 1, {0xFFFF0000}), 1, 1));
    source.objects.Append(ObjectAt(DibOf(1, 1, {0xFFFFFFFF}), 0, 0));
    source.objects.Top()->visible = false;

    ASSERT_TRUE(SaveIconFile(source, folder.File("a.cur"), IconKind::Cursor, {1, 2}, &ui));
    const Bytes file = FileContents(folder.File("a.cur"));
    const Bytes front = {0, 0, 2, 0,  1, 0, 3, 2, 0, 0, 1, 0, 2, 0, 72, 0, 0, 0,  22,
                         0, 0, 0, 40, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0,  1, 0, 32, 0};
    EXPECT_EQ(Bytes(file.begin(), file.begin() + static_cast<ptrdiff_t>(front.size())), front);
    // Mask rows, the bottom one first.
    EXPECT_EQ(Bytes(file.end() - 8, file.end()), (Bytes{0x80, 0, 0, 0, 0x20, 0, 0, 0}));
    ASSERT_TRUE(Load(file));
    EXPECT_TRUE(SameBytes(canvas.objects.At(0)->image->Dib(),
                          DibOf(3, 2, {0xFF010203, 0xFF040506, 0x00070809, 0, 0xFFFF0000, 0xFF0D0E0F})));

    ASSERT_TRUE(SaveAnimatedCursorFile(source, folder.File("a.ani"), {1, 2}, &ui));
    ASSERT_TRUE(Load(FileContents(folder.File("a.ani")), true));
    ASSERT_EQ(canvas.objects.Count(), 2u);
    EXPECT_EQ(canvas.frameDelay, 7);
    EXPECT_TRUE(SameBytes(canvas.objects.At(1)->image->Dib(), DibOf(3, 2, {0, 0, 0, 0, 0xFFFF0000, 0})));
    EXPECT_FALSE(SaveAnimatedCursorFile({}, folder.File("b.ani"), {}, nullptr));
    EXPECT_FALSE(SaveIconFile({}, folder.File("b.ico"), IconKind::Icon, {}, nullptr));
    EXPECT_FALSE(std::filesystem::exists(folder.File("b.ani")));
}

} // namespace
