// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/io/AtomicFile.h"

#include "platform/io/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kMaxLinks = 40;
constexpr int kNameAttempts = 100;
constexpr size_t kBufferBytes = size_t{1} << 16;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

/// What the path means once every symbolic link at its end is followed, also where the last one points to
/// nothing yet.
std::optional<fs::path> FollowLinks(fs::path path)
{
    std::error_code error;
    for (int links = 0; links < kMaxLinks; ++links) {
        if (!fs::is_symlink(path, error))
            return path;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return std::nullopt;
        path = path.parent_path() / next;
    }
    return std::nullopt;
}

fs::path FolderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// A new empty file beside `target`.
int CreateNeighbour(const fs::path& target, fs::path& neighbour)
{
    std::random_device random;
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        neighbour = FolderOf(target) / (".pixolune-" + std::to_string(random()) + ".tmp");
        const int descriptor = ::open(neighbour.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

/// A rename survives a power failure only when its folder is written too. Not every file system can do that;
/// the new file is in place by then, so a failure changes nothing.
void FlushFolder(const fs::path& folder)
{
    const CFileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.IsOpen())
        ::fsync(descriptor.Get());
}

} // namespace

CAtomicFile::CAtomicFile(const fs::path& target)
{
    const std::optional<fs::path> followed = FollowLinks(target);
    if (!followed || !followed->has_filename())
        return;
    m_target = *followed;
    struct stat old = {};
    const bool replaces = ::stat(m_target.c_str(), &old) == 0;
    if (replaces && (!S_ISREG(old.st_mode) || ::access(m_target.c_str(), W_OK) != 0))
        return;
    CFileDescriptor file(CreateNeighbour(m_target, m_temporary));
    if (!file.IsOpen())
        return;
    if (replaces) {
        // Somebody else's file may become the user's own, as with every program that replaces files.
        [[maybe_unused]] const int sameOwner = ::fchown(file.Get(), old.st_uid, old.st_gid);
    }
    if (!replaces || ::fchmod(file.Get(), old.st_mode & kPermissions) == 0)
        m_stream = ::fdopen(file.Get(), "w+b");
    if (m_stream == nullptr) {
        Discard();
        return;
    }
    static_cast<void>(file.Release());
    std::setvbuf(m_stream, nullptr, _IOFBF, kBufferBytes);
}

CAtomicFile::~CAtomicFile()
{
    Discard();
}

void CAtomicFile::Discard()
{
    if (m_stream != nullptr)
        std::fclose(m_stream);
    m_stream = nullptr;
    if (!m_temporary.empty())
        ::unlink(m_temporary.c_str());
    m_temporary.clear();
}

bool CAtomicFile::Write(std::span<const uint8_t> bytes)
{
    if (m_stream == nullptr || std::ferror(m_stream) != 0)
        return false;
    return bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), m_stream) == bytes.size();
}

bool CAtomicFile::Commit()
{
    if (m_stream == nullptr)
        return false;
    bool written = std::ferror(m_stream) == 0;
    written = std::fflush(m_stream) == 0 && written;
    written = written && ::fsync(::fileno(m_stream)) == 0;
    written = std::fclose(m_stream) == 0 && written;
    m_stream = nullptr;
    if (!written || ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        Discard();
        return false;
    }
    m_temporary.clear();
    FlushFolder(FolderOf(m_target));
    return true;
}

bool WriteFileAtomically(const fs::path& path, std::span<const uint8_t> bytes)
{
    CAtomicFile file(path);
    return file.Write(bytes) && file.Commit();
}
