// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/SaveAs.h"

#include "fileio/DocumentFiles.h"
#include "support/TestDocument.h"

namespace {

struct SaveAsTest : testing::Test {
    bool Save(const std::string& name, const SaveAsOptions& options = {})
    {
        const SaveFormatRow* format = FindSaveFormat(folder.File(name));
        return format != nullptr && SaveDocumentAs(test.doc, folder.File(name), *format, options);
    }
    /// The only object of a file that was saved.
    CPackedDib Load(const std::string& name)
    {
        CObjectCanvas canvas;
        EXPECT_TRUE(LoadFile(canvas, folder.File(name), test.services));
        return canvas.objects.Count() == 1 ? canvas.objects.Top()->image->Dib().Duplicate() : CPackedDib();
    }
    CTemporaryFolder folder;
    TestDocument test;
};

/// Largest difference of any colour byte, and of alpha.
int LargestDifference(const CPackedDib& a, const CPackedDib& b)
{
    int largest = 0;
    for (size_t i = 0; i < a.Bits().size(); ++i)
        largest = std::max(largest, std::abs(a.Bits()[i] - b.Bits()[i]));
    return largest;
}

TEST_F(SaveAsTest, KeepsWhatTheFormatCanHold)
{
    // Transparent on the left, opaque on the right, few colours; canvas 40 x 30.
    CPackedDib picture = CPackedDib::CreateTransparent(40, 30);
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            uint8_t* pixel = picture.Row(y) + x * 4;
            pixel[0] = static_cast<uint8_t>(x / 10 * 80);
            pixel[1] = static_cast<uint8_t>(y / 10 * 90);
            pixel[3] = x < 20 ? 0 : 255;
        }
    }
    test.Add(picture.Duplicate(), 0, 0, true);
    test.settings.Set(Setting::DefaultBackgroundColor, 0x0000FF);
    CPackedDib filled = picture.Duplicate();
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            const uint8_t red[] = {0, 0, 255, 255};
            std::copy_n(x < 20 ? red : picture.Row(y) + x * 4, 4, filled.Row(y) + x * 4);
        }
    }
    struct Row {
        const char* name;
        DibFormat colors;
        int tiff;
        bool keepsAlpha;
        int tolerance;
    };
    constexpr auto kTrue = DibFormat::TrueColors;
    constexpr Row kCases[] = {
        {"a.png", kTrue, 1, true, 0},
        {"a.TGA", kTrue, 1, true, 0},
        {"none.tif", kTrue, 1, true, 0},
        {"lzw.tiff", kTrue, 5, true, 0},
        {"deflate.tif", kTrue, 32946, true, 0},
        {"a.ico", kTrue, 1, true, 0},
        {"a.cur", kTrue, 1, true, 0},
        {"a.ani", kTrue, 1, true, 0},
        {"true.bmp", kTrue, 1, false, 0},
        {"high.bmp", DibFormat::HighColors, 1, false, 4},
        {"colors256.bmp", DibFormat::Colors256, 1, false, 0},
        {"colors16.bmp", DibFormat::Colors16, 1, false, 0},
        {"a.pcx", kTrue, 1, false, 0},
        {"a.jpg", kTrue, 1, false, 120},
        {"jpeg.tif", kTrue, 7, false, 120},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        test.settings.Set(Setting::TIFFEncodeMode, row.tiff);
        ASSERT_TRUE(Save(row.name, {row.colors, {3, 4}}));
        const CPackedDib loaded = Load(row.name);
        ASSERT_EQ(loaded.IsEmpty() ? Size() : loaded.Size(), (Size{40, 30}));
        CPackedDib expected = row.keepsAlpha ? picture.Duplicate() : filled.Duplicate();
        EXPECT_LE(LargestDifference(loaded, expected), row.tolerance);
    }
    for (const char* name : {"g3.tif", "bw.bmp"}) {
        test.settings.Set(Setting::TIFFEncodeMode, 3);
        ASSERT_TRUE(Save(name, {DibFormat::BlackAndWhite, {}}));
        const CPackedDib loaded = Load(name);
        ASSERT_FALSE(loaded.IsEmpty());
        for (size_t i = 0; i < loaded.Bits().size(); ++i)
            ASSERT_TRUE(loaded.Bits()[i] == 0 || loaded.Bits()[i] == 255);
    }
    EXPECT_FALSE(test.doc.IsModified());
}

TEST_F(SaveAsTest, GifKeepsUpTo256ColoursAndItsTransparency)
{
    for (const int colours : {2, 3, 16, 17, 255, 256}) {
        for (const bool transparent : {false, true}) {
            SCOPED_TRACE(std::to_string(colours) + (transparent ? " and transparency" : ""));
            TestDocument fresh;
            CPackedDib picture = UniformDib(40, 30, 0xFF000000);
            for (int i = 0; i < colours; ++i)
                picture.Row(i / 40)[i % 40 * 4 + 1] = static_cast<uint8_t>(i);
            if (transparent)
                picture.Row(20)[3] = 0;
            fresh.doc.Canvas().objects.Append(ObjectAt(picture.Duplicate(), 0, 0));
            const auto path = folder.File("x.gif");
            ASSERT_TRUE(SaveDocumentAs(fresh.doc, path, *FindSaveFormat(path), {}));
            const CPackedDib loaded = Load("x.gif");
            ASSERT_FALSE(loaded.IsEmpty());
            EXPECT_EQ(PixelOf(loaded, 0, 20) >> 24, transparent ? 0u : 255u);
            EXPECT_EQ(PixelOf(loaded, 1, 20) >> 24, 255u);
            if (transparent)
                std::copy_n(loaded.Row(20), 4, picture.Row(20));
            // One colour more than fits beside transparency moves a little.
            EXPECT_LE(LargestDifference(loaded, picture), colours == 256 && transparent ? 8 : 0);
        }
    }
}

TEST_F(SaveAsTest, AFailureSaysSoAndLeavesTheDocument)
{
    test.Add(RandomDib(3, 3, 1), 0, 0);
    EXPECT_FALSE(Save("absent folder/a.png"));
    EXPECT_EQ(
        test.ui.TakeMessages(),
        std::vector<std::string>{"Save to file " + folder.File("absent folder/a.png").string() + " fail!"});
    EXPECT_EQ(FindSaveFormat("a.txt"), nullptr);
}

} // namespace
