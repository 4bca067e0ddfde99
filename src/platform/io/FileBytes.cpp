// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/io/FileBytes.h"

#include "platform/io/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

bool ReadFully(int descriptor, std::span<uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::read(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
    return true;
}

} // namespace

std::optional<CHeapBlock> ReadFileBytes(const std::filesystem::path& path, int64_t limitBytes)
{
    // Non-blocking, so that a pipe without a writer is refused and not waited for.
    const CFileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0)
        return std::nullopt;
    if (!S_ISREG(status.st_mode) || status.st_size > limitBytes)
        return std::nullopt;
    CHeapBlock block = CHeapBlock::Allocate(static_cast<size_t>(status.st_size), 0, BlockContent::Undefined);
    if (block.IsEmpty() || !ReadFully(file.Get(), block.Bytes()))
        return std::nullopt;
    return block;
}
