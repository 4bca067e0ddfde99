// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/io/FileDescriptor.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

/// The folder in which the user's journals lie when nothing else is said: pixolune/journals in the folder for
/// the state of programs. Empty when the user has no home.
[[nodiscard]] std::filesystem::path UserJournalFolder();

/// A folder that this process alone uses for as long as this object lives: it holds a lock on a file in it,
/// which the system takes back from a process that ends, however it ends.
class CJournalFolder {
public:
    /// A new folder in `parent`, which is made where it does not exist; none when that fails.
    [[nodiscard]] static std::unique_ptr<CJournalFolder> Create(const std::filesystem::path& parent);
    /// All folders in `parent` that processes left behind when they died, now this one's.
    [[nodiscard]] static std::vector<std::unique_ptr<CJournalFolder>>
    TakeOver(const std::filesystem::path& parent);
    /// Removes the folder unless there is a journal in it.
    ~CJournalFolder();
    CJournalFolder(const CJournalFolder&) = delete;
    CJournalFolder& operator=(const CJournalFolder&) = delete;

    /// A path for another journal.
    [[nodiscard]] std::filesystem::path NewJournal();
    /// The journals in it, oldest first.
    [[nodiscard]] std::vector<std::filesystem::path> Journals() const;

private:
    CJournalFolder(std::filesystem::path path, int lock) : m_path(std::move(path)), m_lock(lock) {}
    [[nodiscard]] static std::unique_ptr<CJournalFolder> Lock(const std::filesystem::path& folder);

    std::filesystem::path m_path;
    CFileDescriptor m_lock;
    int m_lastNumber = 0;
};
