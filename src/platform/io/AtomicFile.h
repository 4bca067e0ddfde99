// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <span>

/// Writes a file as a whole or not at all. Everything goes to a temporary neighbour in the target's folder;
/// Commit flushes it to the disk and renames it over the target. Without a successful Commit the neighbour
/// is removed and the target stays as it was.
///
/// A symbolic link is followed: its target is replaced, the link stays. The new file gets the permissions of
/// the old one. A target that is no regular file, or may not be written, is refused.
class CAtomicFile {
public:
    explicit CAtomicFile(const std::filesystem::path& target);
    ~CAtomicFile();
    CAtomicFile(const CAtomicFile&) = delete;
    CAtomicFile& operator=(const CAtomicFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_stream != nullptr; }
    /// Appends; false when the file is not open or anything failed so far.
    [[nodiscard]] bool Write(std::span<const uint8_t> bytes);
    /// The open temporary file, for reading, writing and seeking; null when it is not open. Its owner closes
    /// it.
    [[nodiscard]] std::FILE* Stream() { return m_stream; }
    /// Puts the file in its place and closes it. False when anything failed since it was opened.
    [[nodiscard]] bool Commit();

private:
    void Discard();

    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    std::FILE* m_stream = nullptr;
};

/// All of `bytes` at once; false, and the old file as it was, on any failure.
[[nodiscard]] bool WriteFileAtomically(const std::filesystem::path& path, std::span<const uint8_t> bytes);
