// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/TrialSave.h"

#include "fileio/SaveLosses.h"
#include "support/TestDocument.h"

#include <set>

namespace {

std::set<std::filesystem::path> TemporaryFiles()
{
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
        if (entry.is_regular_file() && entry.path().filename().string().starts_with("pixolune-"))
            files.insert(entry.path());
    }
    return files;
}

TEST(TrySave, GivesTheLengthAndThePictureOfTheFileThatIsSaved)
{
    TestDocument test;
    test.Add(RandomDib(40, 30, 5), 0, 0);
    test.Add(RandomDib(40, 30, 6), 0, 0);
    CTemporaryFolder folder;
    SaveAsOptions options;
    options.bmpColors = DibFormat::Grays16;
    for (const SaveFormatRow& format : SaveFormatTable()) {
        SCOPED_TRACE(format.extension);
        const auto before = TemporaryFiles();
        const auto trial = TrySave(test.doc.Canvas(), format, options, test.settings);
        EXPECT_EQ(TemporaryFiles(), before);
        const std::filesystem::path path = folder.File(std::string("a").append(format.extension));
        ASSERT_TRUE(SaveDocumentAs(test.doc, path, format, options));
        ASSERT_TRUE(trial.has_value());
        EXPECT_EQ(trial->fileBytes, std::filesystem::file_size(path));
        const bool keepsFrames = LimitsOf(format, options, test.settings).keepsFrames;
        ASSERT_EQ(trial->pictures.size(), keepsFrames ? 2u : 1u);
        EXPECT_EQ(trial->pictures.back().Size(), test.doc.Canvas().Size());
    }
    test.doc.Canvas().width = 70000;
    EXPECT_FALSE(TrySave(test.doc.Canvas(), *FindSaveFormat("a.gif"), options, test.settings).has_value());
}

TEST(SaveLosses, NameWhatAFormatCannotKeep)
{
    TestDocument test;
    const std::initializer_list<uint32_t> pixels = {0xFF102030, 0x80FF0000, 0x00000000, 0xFF0000FF};
    struct Row {
        const char* name;
        const char* path;
        DibFormat colors;
        int32_t tiff;
        int objects; ///< visible ones
        int delay;
        const char* losses;
    };
    constexpr Row kRows[] = {
        {"alpha is kept", "a.png", DibFormat::TrueColors, 1, 1, 0, ""},
        {"objects", "a.tga", DibFormat::TrueColors, 1, 2, 0, "separate objects"},
        {"frames", "a.gif", DibFormat::TrueColors, 1, 2, 5,
         "the frames of the animation, partial transparency"},
        {"lossy", "a.jpg", DibFormat::TrueColors, 1, 1, 0, "transparency, the exact colors"},
        {"two colours", "a.bmp", DibFormat::BlackAndWhite, 1, 1, 0, "transparency, colors other than gray"},
        {"room enough", "a.bmp", DibFormat::Colors16, 1, 1, 0, "transparency"},
        {"fax", "a.tif", DibFormat::TrueColors, 4, 1, 0, "transparency, colors other than gray"},
        {"deflate", "a.tif", DibFormat::TrueColors, 8, 1, 0, ""},
        {"layers", "a.psd", DibFormat::TrueColors, 1, 2, 5, ""},
        {"steps", "a.ani", DibFormat::TrueColors, 1, 2, 5, ""},
        {"one image", "a.cur", DibFormat::TrueColors, 1, 2, 0, "separate objects"},
        {"no alpha", "a.pcx", DibFormat::TrueColors, 1, 1, 0, "transparency"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        CObjectCanvas canvas;
        canvas.width = canvas.height = 2;
        canvas.frameDelay = static_cast<uint16_t>(row.delay);
        for (int index = 0; index < row.objects; ++index)
            canvas.objects.Append(ObjectAt(DibOf(2, 2, pixels), 0, 0));
        SaveAsOptions options;
        options.bmpColors = row.colors;
        test.settings.Set(Setting::TIFFEncodeMode, row.tiff);
        PictureFacts facts = FactsOf(canvas);
        AddPixelFacts(facts, DibOf(2, 2, pixels));
        const std::string expected = *row.losses == '\0' ? "" : Text(Str::NotKept, row.losses);
        EXPECT_EQ(DescribeLosses(facts, LimitsOf(*FindSaveFormat(row.path), options, test.settings)),
                  expected);
    }

    PictureFacts many;
    AddPixelFacts(many, RandomDib(40, 30, 1));
    EXPECT_NE(DescribeLosses(many, LimitsOf(*FindSaveFormat("a.gif"), {}, test.settings))
                  .find("more than 256 colors"),
              std::string::npos);
    CObjectCanvas canvas;
    canvas.objects.Append(ObjectAt(DibOf(2, 2, pixels), 0, 0));
    canvas.objects.Top()->visible = false;
    EXPECT_EQ(DescribeLosses(FactsOf(canvas), LimitsOf(*FindSaveFormat("a.png"), {}, test.settings)),
              "This file will not keep: hidden objects.");
}

} // namespace
