// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdPixels.h"
#include "fileio/PsdReader.h"
#include "fileio/PsdText.h"
#include "fileio/PsdWriter.h"
#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"
#include "support/Corpus.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <algorithm>
#include <string_view>

namespace {

using Bytes = std::vector<uint8_t>;

/// Asked about a layered file, it changes the choice.
class CChoosingUi final : public IUserInterface {
public:
    void SetPosition(int) override {}
    void ShowMessage(const std::string&) override {}
    bool AskYesNo(const std::string&) override { return true; }
    void SetStatusText(const std::string&) override {}
    bool ChooseLayeredFile(LayeredFileChoice& choice) override
    {
        ++asked;
        simplifies = choice.simplifiesLayers;
        choice = {true, false};
        return accepts;
    }
    int asked = 0;
    bool simplifies = false;
    bool accepts = false;
};

CObjectCanvas Layers()
{
    CObjectCanvas canvas;
    canvas.width = 40;
    canvas.height = 30;
    CPackedDib lower = RandomDib(33, 20, 1);
    for (int y = 0; y < 10; ++y)
        std::fill_n(lower.Row(y), 33 * 4, uint8_t{255});
    canvas.objects.Append(ObjectAt(std::move(lower), -3, 5, "b\xC3\xA4um \xF0\x9F\x8C\xB3"));
    canvas.objects.Append(ObjectAt(RandomDib(7, 50, 2), 36, -9, ""));
    canvas.objects.Append(ObjectAt(UniformDib(300, 2, 0xFF112233), 0, 3, std::string(60, 'x')));
    canvas.objects.At(1)->visible = false;
    canvas.objects.At(2)->transparency = 100;
    return canvas;
}

TEST(Psd, ReadsBackWhatItWrote)
{
    const CTemporaryFolder folder;
    TestDocument test;
    const CObjectCanvas canvas = Layers();
    ASSERT_TRUE(SavePsdFile(canvas, folder.File("a.psd"), &test.ui));
    EXPECT_EQ(test.ui.positions, (std::vector<int>{25, 50, 75, 100}));
    CObjectCanvas read;
    ASSERT_TRUE(LoadPsdFile(read, folder.File("a.psd"), test.services));
    EXPECT_EQ(read.Size(), canvas.Size());
    ASSERT_EQ(read.objects.Count(), canvas.objects.Count());
    for (size_t index = 0; index < read.objects.Count(); ++index) {
        const CPicObject& before = *canvas.objects.At(index);
        const CPicObject& after = *read.objects.At(index);
        EXPECT_TRUE(SameBytes(after.image->Dib(), before.image->Dib()));
        EXPECT_EQ(after.image->name, before.image->name);
        EXPECT_EQ(after.Rectangle(), before.Rectangle());
        EXPECT_EQ(after.visible, before.visible);
        EXPECT_EQ(after.transparency, before.transparency);
    }
    const Bytes bytes = FileContents(folder.File("a.psd"));
    const std::optional<PsdFile> file = ParsePsdFile(bytes);
    ASSERT_TRUE(file);
    const CPackedDib merged = ReadPsdComposite(*file);
    const CPackedDib frame = Flatten(canvas);
    // What lies over white keeps fewer steps the clearer it is.
    for (int y = 0; y < frame.Height(); ++y) {
        for (int x = 0; x < frame.Width(); ++x) {
            const uint8_t* a = merged.Row(y) + ptrdiff_t{x} * 4;
            const uint8_t* b = frame.Row(y) + ptrdiff_t{x} * 4;
            ASSERT_EQ(a[3], b[3]);
            for (int channel = 0; channel < 3 && b[3] != 0; ++channel)
                ASSERT_LE(std::abs(a[channel] - b[channel]), 255 / b[3]) << x << ' ' << y;
        }
    }
}

TEST(Psd, AsksHowToOpenLayers)
{
    const CTemporaryFolder folder;
    TestDocument test;
    CChoosingUi ui;
    AppServices services{test.settings, ui, test.clipboard, test.names};
    const std::filesystem::path path = folder.File("a.psd");
    ASSERT_TRUE(SavePsdFile(Layers(), path, nullptr));
    const auto objects = [&] {
        CObjectCanvas canvas;
        EXPECT_TRUE(LoadPsdFile(canvas, path, services));
        return canvas.objects.Count();
    };
    EXPECT_EQ(objects(), 3u);
    ui.accepts = true;
    EXPECT_EQ(objects(), 1u);
    EXPECT_EQ(ui.asked, 2);
    EXPECT_EQ(objects(), 1u);
    EXPECT_EQ(ui.asked, 2) << "the tip was switched off";
    test.settings.Set(Setting::PSDOpenFashion, 0);
    EXPECT_EQ(objects(), 3u);
}

TEST(Psd, SaysWhenObjectsCannotShowWhatLayersDo)
{
    struct Row {
        const char* name;
        std::string_view found;
        std::string_view put;
        bool simplifies;
    };
    // A layer ends its record with the name in tagged form.
    const Row kRows[] = {{"plain", "8BIMnorm", "8BIMnorm", false},
                         {"blending mode", "8BIMnorm", "8BIMmul ", true},
                         {"effects", "8BIMluni", "8BIMlfx2", true},
                         {"unknown block", "8BIMluni", "8BIMabcd", false}};
    const CTemporaryFolder folder;
    TestDocument test;
    ASSERT_TRUE(SavePsdFile(Layers(), folder.File("a.psd"), nullptr));
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        Bytes bytes = FileContents(folder.File("a.psd"));
        const auto at = std::ranges::search(bytes, row.found);
        ASSERT_FALSE(at.empty());
        std::ranges::copy(row.put, at.begin());
        ASSERT_TRUE(WriteFileAtomically(folder.File("b.psd"), bytes));
        CChoosingUi ui;
        AppServices services{test.settings, ui, test.clipboard, test.names};
        CObjectCanvas canvas;
        EXPECT_TRUE(LoadPsdFile(canvas, folder.File("b.psd"), services));
        EXPECT_EQ(ui.simplifies, row.simplifies);
    }
}

TEST(Psd, ReadsPlanesOfEveryKind)
{
    struct Row {
        const char* name;
        int depth;
        Bytes data;
        Bytes samples; ///< of 3 x 2; empty: refused
    };
    const Bytes kSamples = {1, 2, 3, 4, 5, 6};
    const Row kRows[] = {
        {"raw", 8, {0, 0, 1, 2, 3, 4, 5, 6}, kSamples},
        {"raw, cut", 8, {0, 0, 1, 2, 3, 4, 5}, {}},
        {"rows", 8, {0, 1, 0, 4, 0, 5, 2, 1, 2, 3, 0, 4, 1, 5, 6}, kSamples},
        {"rows, one too short", 8, {0, 1, 0, 3, 0, 5, 2, 1, 2, 3, 0, 4, 1, 5, 6}, {}},
        {"deep", 16, {0, 0, 0, 128, 0, 127, 255, 255, 1, 129, 1, 128, 128, 0}, {0, 0, 255, 1, 1, 128}},
        {"bits", 1, {0, 0, 0xA0, 0x40}, {0, 255, 0, 255, 0, 255}},
        {"zip", 8, {0, 2, 0x78, 1, 1, 6, 0, 0xF9, 0xFF, 1, 2, 3, 4, 5, 6, 0, 0x3E, 0, 0x16}, kSamples},
        {"zip with differences",
         8,
         {0, 3, 0x78, 1, 1, 6, 0, 0xF9, 0xFF, 1, 1, 1, 4, 1, 1, 0, 0x24, 0, 0x0A},
         kSamples},
        {"unknown", 8, {0, 4, 1, 2, 3, 4, 5, 6}, {}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const std::vector<PsdPlane> planes = ReadPsdPlanes(CByteReader(row.data), row.depth, 3, 2, 1, 1);
        ASSERT_EQ(planes.size(), row.samples.empty() ? 0u : 1u);
        if (!planes.empty()) {
            const auto samples = planes[0].Bytes().first(kSamples.size());
            EXPECT_EQ(Bytes(samples.begin(), samples.end()), row.samples);
        }
    }
}

TEST(Psd, ConvertsNames)
{
    EXPECT_EQ(Utf16Of("a\xC3\xA4\xF0\x9F\x8C\xB3"), u"a\u00E4\U0001F333");
    EXPECT_EQ(Utf16Of("\xC3"), u"\uFFFD");
    EXPECT_EQ(Utf16Of("\xFFx\xC0\x80"), u"\uFFFDx\uFFFD\uFFFD");
}

} // namespace
