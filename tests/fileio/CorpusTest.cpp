// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Corpus.h"

#include "fileio/DocumentFiles.h"
#include "platform/codec/Image.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <random>
#include <sstream>

namespace {

const std::vector<std::string> kFormats = {"gif", "ico", "cur", "ani", "avi"};

/// "7" or "0-1".
bool IsCount(const std::string& stated, size_t count)
{
    const size_t dash = stated.find('-');
    const int low = std::atoi(stated.c_str());
    const int high = dash == std::string::npos ? low : std::atoi(stated.c_str() + dash + 1);
    return static_cast<int>(count) >= low && static_cast<int>(count) <= high;
}

/// The number behind "word=" in the notes, or `otherwise`.
int Noted(const CorpusFile& file, const std::string& word, int otherwise)
{
    const size_t at = (" " + file.notes).find(" " + word + "=");
    return at == std::string::npos ? otherwise : std::atoi(file.notes.c_str() + at + word.size() + 1);
}

/// The truth picture of object `index`, where there is one: NAME.f<index>.png, NAME.i<index>.png, or for
/// frames with several images NAME.f<index>.i0.png.
CPackedDib TruthOf(const std::filesystem::path& folder, const CorpusFile& file, size_t index)
{
    const std::filesystem::path base =
        folder / "truth" / file.format / std::filesystem::path(file.path).stem();
    const std::string number = std::to_string(index);
    for (const std::string& name :
         {".f" + number + ".png", ".i" + number + ".png", ".f" + number + ".i0.png"}) {
        if (std::filesystem::exists(base.string() + name))
            return CImage::LoadPNGFile(base.string() + name, nullptr);
    }
    return {};
}

TEST(Corpus, FilesOfManyPicturesLoadAsExpected)
{
    REQUIRE_CORPUS(folder, "");
    for (const CorpusFile& file : CorpusFiles(kFormats)) {
        SCOPED_TRACE(file.path);
        TestDocument test;
        CObjectCanvas canvas;
        const bool isLoaded = LoadFile(canvas, folder / file.path, test.services);
        if (file.expect != "either") {
            EXPECT_EQ(isLoaded, file.expect == "ok");
        }
        if (!isLoaded)
            continue;
        if (file.expect == "ok") {
            EXPECT_TRUE(IsCount(file.count, canvas.objects.Count())) << canvas.objects.Count();
            EXPECT_EQ(canvas.Size(), (Size{file.width, file.height}));
            EXPECT_EQ(canvas.frameDelay, Noted(file, "delay", Noted(file, "delay0", 0)));
            EXPECT_EQ(canvas.backgroundIndex, static_cast<uint32_t>(Noted(file, "background", 0)));
        }
        bool hasTruth = false;
        for (size_t index = 0; index < canvas.objects.Count(); ++index) {
            EXPECT_TRUE(canvas.objects.At(index)->visible);
            const CPackedDib truth = TruthOf(folder, file, index);
            if (truth.IsEmpty())
                continue;
            hasTruth = true;
            EXPECT_TRUE(Matches(canvas.objects.At(index)->image->Dib(), truth,
                                file.compare.starts_with("RGB") ? file.compare : "RGBA,exact"))
                << index;
        }
        EXPECT_EQ(hasTruth, file.truth != "-");
    }
}

TEST(Corpus, LayeredFilesLoadAsExpected)
{
    REQUIRE_CORPUS(folder, "");
    for (const CorpusFile& file : CorpusFiles({"psd"})) {
        SCOPED_TRACE(file.path);
        TestDocument test;
        CObjectCanvas layered;
        CObjectCanvas merged;
        const bool isLoaded = LoadFile(layered, folder / file.path, test.services);
        test.settings.Set(Setting::PSDOpenFashion, 1);
        const bool isMerged = LoadFile(merged, folder / file.path, test.services);
        if (file.expect == "either")
            continue;
        ASSERT_TRUE(isLoaded && isMerged);
        const size_t at = file.notes.find("layers with pixels=");
        const auto pictures = static_cast<size_t>(std::max(std::atoi(file.notes.c_str() + at + 19), 1));
        EXPECT_EQ(layered.objects.Count(), pictures);
        ASSERT_EQ(merged.objects.Count(), 1u);
        EXPECT_EQ(merged.Size(), (Size{file.width, file.height}));
        if (file.truth == "-")
            continue;
        EXPECT_TRUE(Matches(merged.objects.Top()->image->Dib(),
                            CImage::LoadPNGFile(folder / file.truth, nullptr), file.compare));
        std::ifstream table(folder / "truth/psd" /
                            (std::filesystem::path(file.path).stem().string() + ".layers.tsv"));
        std::string line;
        std::getline(table, line);
        for (const Ref<CPicObject>& object : layered.objects) {
            ASSERT_TRUE(std::getline(table, line));
            std::istringstream cells(line);
            std::string index, depth, kind, name, visible, opacity, blend;
            for (std::string* cell : {&index, &depth, &kind, &name, &visible, &opacity, &blend})
                std::getline(cells, *cell, '\t');
            Rect rect;
            cells >> rect.left >> rect.top >> rect.right >> rect.bottom;
            EXPECT_EQ(object->image->name, name);
            EXPECT_EQ(object->visible, visible == "1");
            EXPECT_EQ(255 - object->transparency, std::atoi(opacity.c_str()));
            EXPECT_EQ(object->Rectangle(), rect);
        }
    }
}

TEST(Corpus, DamagedFilesOfManyPicturesDoNoHarm)
{
    REQUIRE_CORPUS(folder, "");
    const CTemporaryFolder temporary;
    TestDocument test;
    std::mt19937 random(9);
    std::vector<std::string> formats = kFormats;
    formats.push_back("psd");
    for (const CorpusFile& file : CorpusFiles(formats)) {
        const std::vector<uint8_t> whole = FileContents(folder / file.path);
        const std::filesystem::path path = temporary.File("damaged." + file.format);
        for (int round = 0; round < 12; ++round) {
            std::vector<uint8_t> bytes(whole.begin(),
                                       whole.begin() + static_cast<ptrdiff_t>(random() % (whole.size() + 1)));
            if (round % 2 != 0)
                bytes = whole;
            for (size_t change = random() % 8; change > 0 && !bytes.empty(); --change)
                bytes[random() % std::min<size_t>(bytes.size(), 400)] = static_cast<uint8_t>(random());
            WriteContents(path, bytes);
            CObjectCanvas canvas;
            if (LoadFile(canvas, path, test.services)) {
                for (const Ref<CPicObject>& object : canvas.objects)
                    EXPECT_EQ(object->image->BitCount(), 32);
            }
        }
    }
}

} // namespace
