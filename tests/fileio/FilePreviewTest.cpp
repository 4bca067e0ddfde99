// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FilePreview.h"

#include "fileio/GifPlayback.h"
#include "fileio/GifWriter.h"
#include "fileio/SaveAs.h"
#include "fileio/StoredDepth.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

namespace {

constexpr Size kBox{64, 64};

GifFrame FrameOf(CPackedDib dib, Point position, int disposal)
{
    GifFrame frame;
    frame.dib = std::move(dib);
    frame.position = position;
    frame.graphicControlByte = static_cast<uint8_t>(disposal << 2);
    return frame;
}

TEST(GifPlayback, DisposesOfImages)
{
    constexpr uint32_t kRed = 0xFFFF0000, kBlue = 0xFF0000FF, kClear = 0;
    CGifPlayback playback({3, 1});
    ASSERT_TRUE(playback.Advance(FrameOf(DibOf(2, 1, {kRed, kRed}), {0, 0}, 1)));
    EXPECT_TRUE(SameBytes(playback.Screen(), DibOf(3, 1, {kRed, kRed, kClear})));
    ASSERT_TRUE(playback.Advance(FrameOf(DibOf(2, 1, {kClear, kBlue}), {1, 0}, 3)));
    EXPECT_TRUE(SameBytes(playback.Screen(), DibOf(3, 1, {kRed, kRed, kBlue})));
    ASSERT_TRUE(playback.Advance(FrameOf(DibOf(1, 1, {kBlue}), {0, 0}, 2)));
    EXPECT_TRUE(SameBytes(playback.Screen(), DibOf(3, 1, {kBlue, kRed, kClear}))) << "as before the last";
    ASSERT_TRUE(playback.Advance(FrameOf(DibOf(4, 1, {kBlue, kBlue, kBlue, kBlue}), {2, 0}, 0)));
    EXPECT_TRUE(SameBytes(playback.Screen(), DibOf(3, 1, {kClear, kRed, kBlue}))) << "reaches outside";
    ASSERT_TRUE(playback.Advance(FrameOf(DibOf(1, 1, {kBlue}), {9, 9}, 2)));
    EXPECT_TRUE(SameBytes(playback.Screen(), DibOf(3, 1, {kClear, kRed, kBlue}))) << "lies outside";
}

TEST(FilePreview, ShowsEveryFormatThatCanBeSaved)
{
    TestDocument test;
    test.doc.Canvas().width = 100;
    test.doc.Canvas().height = 50;
    test.doc.Canvas().frameDelay = 5;
    test.Add(UniformDib(100, 50, 0xFF204060), 0, 0);
    test.Add(UniformDib(100, 50, 0x00FF0000), 0, 0);
    CTemporaryFolder folder;
    for (const SaveFormatRow& format : SaveFormatTable()) {
        SCOPED_TRACE(format.extension);
        const std::filesystem::path path = folder.File(std::string("a").append(format.extension));
        ASSERT_TRUE(SaveDocumentAs(test.doc, path, format, {}));
        const FilePreview preview = ReadFilePreview(path, kBox);
        ASSERT_EQ(preview.failure, PreviewFailure::None);
        EXPECT_EQ(preview.size, (Size{100, 50}));
        EXPECT_EQ(preview.fileBytes, std::filesystem::file_size(path));
        EXPECT_EQ(preview.pictures[0].Size(), (Size{64, 32})) << "reduced to the box";
        const bool isAnimation = format.extension == ".ani";
        EXPECT_EQ(preview.pictures.size(), isAnimation ? 2u : 1u);
        EXPECT_EQ(preview.parts, isAnimation || format.extension == ".psd" ? 2u : 1u);
        EXPECT_EQ(preview.isOpaque, !isAnimation);
    }
}

TEST(StoredDepth, IsThatOfTheFile)
{
    TestDocument test;
    test.Add(RandomDib(40, 30, 3), 0, 0);
    CTemporaryFolder folder;
    constexpr struct {
        const char* name;
        DibFormat bmpColors;
        int32_t tiffMode;
        int depth;
    } kRows[] = {
        {"a.bmp", DibFormat::Grays16, 1, 4},     {"b.bmp", DibFormat::HighColors, 1, 16},
        {"c.bmp", DibFormat::TrueColors, 1, 24}, {"a.jpg", DibFormat::TrueColors, 1, 24},
        {"a.png", DibFormat::TrueColors, 1, 32}, {"a.tif", DibFormat::TrueColors, 5, 32},
        {"b.tif", DibFormat::TrueColors, 4, 1},  {"a.tga", DibFormat::TrueColors, 1, 32},
        {"a.pcx", DibFormat::TrueColors, 1, 24}, {"a.gif", DibFormat::TrueColors, 1, 8},
        {"a.psd", DibFormat::TrueColors, 1, 32}, {"a.ico", DibFormat::TrueColors, 1, 32},
        {"a.cur", DibFormat::TrueColors, 1, 32}, {"a.ani", DibFormat::TrueColors, 1, 32},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        const std::filesystem::path path = folder.File(row.name);
        SaveAsOptions options;
        options.bmpColors = row.bmpColors;
        test.settings.Set(Setting::TIFFEncodeMode, row.tiffMode);
        ASSERT_TRUE(SaveDocumentAs(test.doc, path, *FindSaveFormat(path), options));
        EXPECT_EQ(StoredDepth(*FindFormat(path), path), row.depth);
    }
    // Lists in lists, as deep as they fit.
    std::vector<uint8_t> lists;
    for (size_t left = kDepthHeadBytes; left > 12; left -= 12) {
        const auto size = static_cast<uint32_t>(left - 8);
        for (const char letter : std::string_view("LIST"))
            lists.push_back(static_cast<uint8_t>(letter));
        for (int shift = 0; shift < 32; shift += 8)
            lists.push_back(static_cast<uint8_t>(size >> shift));
        lists.insert(lists.end(), 4, 'x');
    }
    EXPECT_EQ(StoredDepth(*FindFormat("a.avi"), lists), 0);
}

TEST(FilePreview, ReadsNoMoreOfAnAnimationThanItNeeds)
{
    CGifWriter writer;
    CPackedDib picture = CPackedDib::Create(2, 2, 8, 2);
    writer.WriteHeader({2, 2}, picture.ColourTable(), 2, 8, 0);
    GifFrameOptions options;
    options.tableSize = 2;
    options.delay = 7;
    for (size_t frame = 0; frame < kMostPreviewFrames + 5; ++frame)
        writer.WriteFrame(picture, {}, options, nullptr);
    writer.WriteTrailer();
    CTemporaryFolder folder;
    const std::filesystem::path path = folder.File("long.gif");
    WriteContents(path, writer.Bytes());
    const FilePreview preview = ReadFilePreview(path, kBox);
    EXPECT_EQ(preview.pictures.size(), kMostPreviewFrames);
    EXPECT_TRUE(preview.hasMore);
    EXPECT_EQ(preview.frameDelay, 7);

    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(ReadFilePreview(path, kBox, stop.get_token()).pictures.empty());
}

TEST(FilePreview, SaysWhyThereIsNone)
{
    CTemporaryFolder folder;
    const auto failureOf = [](const std::filesystem::path& path) {
        return ReadFilePreview(path, kBox).failure;
    };
    EXPECT_EQ(failureOf(folder.File("a.txt")), PreviewFailure::UnknownFormat);
    EXPECT_EQ(failureOf(folder.File("absent.png")), PreviewFailure::Unreadable);
    WriteContents(folder.File("long.bmp"), std::vector<uint8_t>{'B', 'M'});
    std::filesystem::resize_file(folder.File("long.bmp"), static_cast<uintmax_t>(kMostPreviewBytes) + 1);
    EXPECT_EQ(failureOf(folder.File("long.bmp")), PreviewFailure::TooLong);
    for (const char* name :
         {"a.gif", "a.avi", "a.psd", "a.ani", "a.ico", "a.png", "a.jpg", "a.pxd", "a.tif"}) {
        SCOPED_TRACE(name);
        WriteContents(folder.File(name), std::vector<uint8_t>(64, 'G'));
        EXPECT_EQ(failureOf(folder.File(name)), PreviewFailure::Unreadable);
    }
}

TEST(FilePreview, ShowsTheBeginningOfAVideo)
{
    REQUIRE_CORPUS(path, "avi/cinepak-15fps.avi");
    const FilePreview preview = ReadFilePreview(path, kBox);
    ASSERT_EQ(preview.failure, PreviewFailure::None);
    EXPECT_GT(preview.pictures.size(), 1u);
    EXPECT_GE(preview.parts, preview.pictures.size());
    EXPECT_GT(preview.frameDelay, 0);
    EXPECT_LE(preview.pictures[0].Width(), kBox.width);
}

} // namespace
