// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestFiles.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int64_t kLimitKib = 1 << 20;

struct Ended {
    int status = 0;
    std::string output;
};

/// Runs a script, keeping journals, in a process that gets no more than a gigabyte of addresses.
Ended RunLimited(const fs::path& folder, const std::string& script)
{
    WriteContents(folder / "script", {reinterpret_cast<const uint8_t*>(script.data()), script.size()});
    const std::string call = "cd " + folder.string() + " && ulimit -v " + std::to_string(kLimitKib) +
                             " && timeout 100 " PIXOLUNE_CLI
                             " run --keep-going --journal journals script > output 2>&1";
    const int ended = std::system(call.c_str());
    const std::vector<uint8_t> output = FileContents(folder / "output");
    return {WIFEXITED(ended) ? WEXITSTATUS(ended) : 255, {output.begin(), output.end()}};
}

/// Black, or black and white at random: the finest regions there are.
enum class Content { Black, Noise };

/// A BMP file with a byte for each pixel.
void WriteBmp(const fs::path& path, uint32_t side, Content content)
{
    constexpr uint32_t kHeader = 54;
    constexpr uint32_t kPalette = 1024;
    std::vector<uint8_t> file(kHeader + kPalette);
    const auto put = [&](size_t at, uint32_t value) {
        for (size_t byte = 0; byte < sizeof value; ++byte)
            file[at + byte] = static_cast<uint8_t>(value >> (8 * byte));
    };
    put(0, 0x4D42);
    put(10, kHeader + kPalette);
    put(14, 40);
    put(18, side);
    put(22, side);
    put(26, 1 | 8 << 16);
    put(46, 256);
    put(kHeader + 4, 0xFFFFFF);
    std::mt19937 random(1);
    for (size_t left = content == Content::Noise ? size_t{side} * side : 0; left > 0; --left)
        file.push_back(random() & 1);
    WriteContents(path, file);
    fs::resize_file(path, kHeader + kPalette + uintmax_t{side} * side);
}

class LimitedMemoryTest : public testing::Test {
protected:
    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer takes more addresses than that";
#endif
    }

    /// Runs a script on a small document and what `huge` says; the small one must be as before.
    Ended ExpectUnharmed(const std::string& huge)
    {
        const std::string asked = "document 1\nnegative\nundo\nprint checksum\n";
        const std::string script =
            "new 40 30 #336699\n" + asked + huge + "\necho huge\n" + asked + "save a.pxd\n";
        Ended ended = RunLimited(folder.Path(), script);
        EXPECT_LE(ended.status, 1) << ended.output;
        const size_t middle = ended.output.find("huge\n");
        EXPECT_NE(middle, std::string::npos) << ended.output;
        const std::string checksum = ended.output.substr(0, ended.output.find('\n'));
        EXPECT_NE(ended.output.find(checksum, middle), std::string::npos) << ended.output;
        EXPECT_TRUE(fs::exists(folder.File("a.pxd")));
        return ended;
    }

    const CTemporaryFolder folder;
};

TEST_F(LimitedMemoryTest, FilesThatLieAreRefused)
{
    size_t count = 0;
    std::error_code error;
    for (const fs::directory_entry& file : fs::directory_iterator(CorpusPath("bad"), error)) {
        SCOPED_TRACE(file.path());
        const Ended ended = ExpectUnharmed("open \"" + file.path().string() + '"');
        EXPECT_EQ(ended.output.find("message: ") != std::string::npos, ended.status == 1) << ended.output;
        ++count;
    }
    if (count == 0)
        GTEST_SKIP() << "no collection of real files";
}

TEST_F(LimitedMemoryTest, WhatIsTooMuchIsSaid)
{
    WriteBmp(folder.File("noise.bmp"), 3600, Content::Noise);
    WriteBmp(folder.File("big.bmp"), 8000, Content::Black); // 64 megapixels
    const struct {
        std::string script;
        bool isTooMuch;
    } rows[] = {
        {"open big.bmp\nselect all\nduplicate-objects\nduplicate-objects\nselect "
         "all\nduplicate-objects\nundo",
         true},
        {"open noise.bmp\ntool magic-wand-selection\nset ConnectedPixelsMagicWand 0\nclick 9 9\n"
         "invert-selection\nselect all\ncut\nundo",
         false},
    };
    for (const auto& [script, isTooMuch] : rows) {
        SCOPED_TRACE(script);
        const Ended ended = ExpectUnharmed(script);
        EXPECT_EQ(ended.output.find("message: Out of Memory!") != std::string::npos, isTooMuch)
            << ended.output;
    }
}

TEST_F(LimitedMemoryTest, ManyLayersEndInAMessage)
{
    std::string script = "new 330 330\n";
    for (int layer = 0; layer < 3000; ++layer)
        script += "new-object\n";
    const Ended ended = ExpectUnharmed(script + "select all\nmake-frame\nundo");
    EXPECT_NE(ended.output.find("message: Out of Memory!"), std::string::npos) << ended.output;
}

} // namespace
