// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimationExport.h"
#include "fileio/DocumentFiles.h"
#include "fileio/SaveAs.h"
#include "support/FullDisk.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace {

namespace fs = std::filesystem;

int failFlush = 0;  ///< errno of the next fsync, 0 for none
int failRename = 0; ///< errno of the next rename, 0 for none

int Fail(int& error)
{
    errno = std::exchange(error, 0);
    return -1;
}

} // namespace

// These stand in for the library's functions in this program.
extern "C" int fsync(int descriptor)
{
    return failFlush != 0 ? Fail(failFlush) : static_cast<int>(::syscall(SYS_fsync, descriptor));
}
extern "C" int rename(const char* from, const char* to) noexcept
{
    return failRename != 0 ? Fail(failRename)
                           : static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

namespace {

constexpr std::string_view kOld = "the old file";
constexpr size_t kSaveAsFormats = 11;

struct SaveFaultsTest : testing::Test {
    SaveFaultsTest() { test.Add(RandomDib(40, 30, 7), 0, 0, true); }

    /// By the writer that the ending chooses: the native file's or one of the Save As commands'; a name that
    /// says so is exported as an animation.
    bool Save(const fs::path& path)
    {
        if (path.filename().string().find("animation") != std::string::npos)
            return ExportAnimation(test.doc, path, {});
        if (path.extension() == ".pxd")
            return SaveDocument(test.doc, path);
        return SaveDocumentAs(test.doc, path, *FindSaveFormat(path), {});
    }
    /// Every writer once, with a file of its format that is in the way.
    template <typename Try> void ForEachWriter(Try tried)
    {
        std::vector<std::string> names = {"a.pxd", "animation.gif", "animation.apng"};
        for (const SaveFormatRow& row : SaveFormatTable())
            names.push_back(std::string("a").append(row.extension));
        ASSERT_EQ(names.size(), 3 + kSaveAsFormats);
        for (const std::string& name : names) {
            SCOPED_TRACE(name);
            const CTemporaryFolder folder;
            const fs::path path = folder.File(name);
            WriteContents(path, {reinterpret_cast<const uint8_t*>(kOld.data()), kOld.size()});
            tried(path);
        }
    }
    void ExpectRefused(const fs::path& path)
    {
        EXPECT_FALSE(Save(path));
        EXPECT_EQ(test.ui.TakeMessages(),
                  (std::vector<std::string>{"Save to file " + path.string() + " fail!"}));
    }
    void ExpectUntouched(const fs::path& path)
    {
        const std::vector<uint8_t> contents = FileContents(path);
        EXPECT_EQ(std::string(contents.begin(), contents.end()), kOld);
        EXPECT_EQ(std::distance(fs::directory_iterator(path.parent_path()), fs::directory_iterator()), 1);
    }

    TestDocument test;
};

TEST_F(SaveFaultsTest, FullDiskKeepsTheOldFile)
{
    ForEachWriter([&](const fs::path& path) {
        ASSERT_TRUE(Save(path));
        const uint64_t size = fs::file_size(path);
        WriteContents(path, {reinterpret_cast<const uint8_t*>(kOld.data()), kOld.size()});
        for (const uint64_t limit : {uint64_t{0}, uint64_t{1}, size / 3, size / 2, size - 1}) {
            SCOPED_TRACE(limit);
            {
                const CFullDisk disk(limit);
                ExpectRefused(path);
            }
            ExpectUntouched(path);
        }
    });
}

TEST_F(SaveFaultsTest, FailingDiskKeepsTheOldFile)
{
    ForEachWriter([&](const fs::path& path) {
        for (int* fault : {&failFlush, &failRename}) {
            for (const int error : {EIO, ENOSPC}) {
                *fault = error;
                ExpectRefused(path);
                EXPECT_EQ(*fault, 0);
                ExpectUntouched(path);
            }
        }
        EXPECT_TRUE(Save(path));
    });
}

TEST_F(SaveFaultsTest, FolderThatIsGoneOrClosedIsSaid)
{
    ForEachWriter([&](const fs::path& path) {
        ExpectRefused(path.parent_path() / "gone" / path.filename());
        ASSERT_EQ(::chmod(path.parent_path().c_str(), 0500), 0);
        // The superuser may write everywhere.
        const uid_t user = ::geteuid();
        if (user == 0) {
            ASSERT_EQ(::chown(path.parent_path().c_str(), 65534, 65534), 0);
            ASSERT_EQ(::seteuid(65534), 0);
        }
        ExpectRefused(path);
        EXPECT_EQ(::seteuid(user), 0);
        ASSERT_EQ(::chmod(path.parent_path().c_str(), 0700), 0);
        ExpectUntouched(path);
    });
}

TEST_F(SaveFaultsTest, LinksAndPermissionsSurvive)
{
    ForEachWriter([&](const fs::path& path) {
        const fs::path link = path.parent_path() / ("link to " + path.filename().string());
        fs::create_symlink(path.filename(), link);
        ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
        EXPECT_TRUE(Save(link));
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_NE(FileContents(path).size(), kOld.size());
        EXPECT_EQ(fs::status(path).permissions(), fs::perms{0640});
    });
}

} // namespace
