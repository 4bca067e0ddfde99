// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr char kLockName[] = "lock";
constexpr char kEnding[] = ".journal";

/// The number that a journal's name begins with; 0 for another file.
int NumberOf(const fs::path& path)
{
    int number = 0;
    const std::string stem = path.stem().string();
    std::from_chars(stem.data(), stem.data() + stem.size(), number);
    return path.extension() == kEnding ? number : 0;
}

} // namespace

fs::path UserJournalFolder()
{
    // Where desktop programs keep their state.
    if (const char* state = std::getenv("XDG_STATE_HOME"); state != nullptr && fs::path(state).is_absolute())
        return fs::path(state) / "pixolune" / "journals";
    const char* home = std::getenv("HOME");
    return home == nullptr ? fs::path() : fs::path(home) / ".local" / "state" / "pixolune" / "journals";
}

std::unique_ptr<CJournalFolder> CJournalFolder::Lock(const fs::path& folder)
{
    const fs::path path = folder / kLockName;
    const int lock = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    std::unique_ptr<CJournalFolder> result(new CJournalFolder({}, lock));
    struct stat locked = {};
    struct stat present = {};
    // Somebody else may have held the lock, and removed the folder, between the two calls.
    if (lock < 0 || ::flock(lock, LOCK_EX | LOCK_NB) != 0 || ::fstat(lock, &locked) != 0 ||
        ::stat(path.c_str(), &present) != 0 || locked.st_ino != present.st_ino)
        return nullptr;
    result->m_path = folder;
    return result;
}

std::unique_ptr<CJournalFolder> CJournalFolder::Create(const fs::path& parent)
{
    std::error_code error;
    fs::create_directories(parent, error);
    std::random_device random;
    constexpr int kAttempts = 10;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const fs::path folder = parent / std::to_string(random());
        // What is painted is nobody else's business.
        if (::mkdir(folder.c_str(), S_IRWXU) != 0)
            continue;
        if (std::unique_ptr<CJournalFolder> created = Lock(folder))
            return created;
    }
    return nullptr;
}

std::vector<std::unique_ptr<CJournalFolder>> CJournalFolder::TakeOver(const fs::path& parent)
{
    std::vector<std::unique_ptr<CJournalFolder>> folders;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(parent, error)) {
        if (!entry.is_directory(error))
            continue;
        if (std::unique_ptr<CJournalFolder> folder = Lock(entry.path()))
            folders.push_back(std::move(folder));
    }
    return folders;
}

CJournalFolder::~CJournalFolder()
{
    if (m_path.empty() || !Journals().empty())
        return;
    // A file that was to take a journal's place may be left.
    std::error_code error;
    fs::remove_all(m_path, error);
}

fs::path CJournalFolder::NewJournal()
{
    return m_path / (std::to_string(++m_lastNumber) + kEnding);
}

std::vector<fs::path> CJournalFolder::Journals() const
{
    std::vector<fs::path> journals;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path, error)) {
        if (NumberOf(entry.path()) > 0)
            journals.push_back(entry.path());
    }
    std::ranges::sort(journals, {}, NumberOf);
    return journals;
}
