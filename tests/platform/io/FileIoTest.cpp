// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteReader.h"
#include "platform/io/FileBytes.h"
#include "support/FullDisk.h"
#include "support/TestPictures.h"

#include <sys/stat.h>

#include <array>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

void Put(const fs::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::string Get(const fs::path& path)
{
    const std::optional<CHeapBlock> block = ReadFileBytes(path);
    return block ? std::string(block->Bytes().begin(), block->Bytes().end()) : "(none)";
}

std::span<const uint8_t> BytesOf(const std::string& text)
{
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

size_t FilesIn(const fs::path& folder)
{
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(ByteReader, NeverPassesTheEnd)
{
    constexpr std::array<uint8_t, 7> kBytes = {0x01, 0x82, 0x03, 0x84, 0x05, 0x86, 0x07};
    CByteReader reader(kBytes);
    uint16_t little = 0;
    int16_t big = 0;
    int32_t word = 0;
    ASSERT_TRUE(reader.ReadU16(little));
    ASSERT_TRUE(reader.ReadBigI16(big));
    EXPECT_EQ(little, 0x8201);
    EXPECT_EQ(big, 0x0384);
    EXPECT_FALSE(reader.ReadI32(word));
    EXPECT_EQ(reader.Position(), 4u);
    ASSERT_TRUE(reader.Seek(3));
    ASSERT_TRUE(reader.ReadI32(word));
    EXPECT_EQ(word, 0x07860584);
    uint8_t byte = 9;
    EXPECT_FALSE(reader.ReadU8(byte));
    EXPECT_EQ(byte, 9);
    EXPECT_FALSE(reader.Seek(8));
    EXPECT_FALSE(reader.Skip(UINT64_MAX));
    CByteReader part;
    EXPECT_FALSE(reader.Slice(UINT64_MAX, 2, part));
    EXPECT_FALSE(reader.Slice(2, UINT64_MAX, part));
    ASSERT_TRUE(reader.Slice(5, 2, part));
    ASSERT_TRUE(part.ReadBigI16(big));
    EXPECT_EQ(big, static_cast<int16_t>(0x8607));
}

TEST(FileBytes, RefusesWhatIsNoReadableFile)
{
    const CTemporaryFolder folder;
    Put(folder.File("eleven"), "eleven byte");
    EXPECT_TRUE(ReadFileBytes(folder.File("eleven"), 11));
    EXPECT_FALSE(ReadFileBytes(folder.File("eleven"), 10));
    EXPECT_FALSE(ReadFileBytes(folder.File("absent")));
    EXPECT_FALSE(ReadFileBytes(folder.Path()));
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(ReadFileBytes(folder.File("pipe")));
    const CAllocationFailure noMemory(0);
    EXPECT_FALSE(ReadFileBytes(folder.File("eleven")));
}

TEST(AtomicFile, ReplacesAndKeepsLinkAndPermissions)
{
    const CTemporaryFolder folder;
    Put(folder.File("real"), "old");
    ASSERT_EQ(::chmod(folder.File("real").c_str(), 0640), 0);
    fs::create_symlink("real", folder.File("link"));
    fs::create_symlink("later", folder.File("dangling"));
    EXPECT_TRUE(WriteFileAtomically(folder.File("link"), BytesOf("new")));
    EXPECT_TRUE(WriteFileAtomically(folder.File("dangling"), BytesOf("first")));
    EXPECT_EQ(Get(folder.File("real")), "new");
    EXPECT_EQ(Get(folder.File("later")), "first");
    EXPECT_TRUE(fs::is_symlink(folder.File("link")));
    EXPECT_TRUE(fs::is_symlink(folder.File("dangling")));
    EXPECT_EQ(fs::status(folder.File("real")).permissions(), fs::perms{0640});
    EXPECT_EQ(FilesIn(folder.Path()), 4u);
}

TEST(AtomicFile, LeavesTheOldFileAndNoTraceAfterAFailure)
{
    const CTemporaryFolder folder;
    const fs::path path = folder.File("kept");
    Put(path, "old");
    {
        CAtomicFile abandoned(path);
        EXPECT_TRUE(abandoned.Write(BytesOf("half")));
    }
    EXPECT_FALSE(WriteFileAtomically(folder.Path(), BytesOf("x")));
    EXPECT_FALSE(WriteFileAtomically(folder.File("absent") / "file", BytesOf("x")));
    fs::create_symlink("loop", folder.File("loop"));
    EXPECT_FALSE(WriteFileAtomically(folder.File("loop"), BytesOf("x")));

    {
        const CFullDisk disk(1000);
        EXPECT_FALSE(WriteFileAtomically(path, BytesOf(std::string(200'000, 'x'))));
    }
    EXPECT_EQ(Get(path), "old");
    EXPECT_EQ(FilesIn(folder.Path()), 2u);
}
