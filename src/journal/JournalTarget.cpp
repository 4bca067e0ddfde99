// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalTarget.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Not tried again before that after a failure.
constexpr auto kPause = 10s;
/// More is not kept for the file that takes the place of one that has failed.
constexpr size_t kMostKeptBytes = size_t{64} << 20;
/// More is not left to the system at once: whoever waits for an entry would wait for that as well.
constexpr uint64_t kMostUnflushedBytes = uint64_t{8} << 20;
/// As much is taken over at once from a journal into the file that takes its place.
constexpr uint64_t kTakenOverBytes = uint64_t{1} << 20;

CFileDescriptor OpenFile(const fs::path& path, int flags)
{
    return CFileDescriptor(::open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR));
}

bool ReadAt(int file, uint64_t position, std::span<uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::pread(file, bytes.data(), bytes.size(), static_cast<off_t>(position));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        position += static_cast<uint64_t>(count);
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
    return true;
}

} // namespace

bool CRecordFile::Append(std::span<const uint8_t> record)
{
    uint64_t at = m_bytes;
    while (!record.empty() && !m_hasFailed) {
        const ssize_t count = ::pwrite(m_file.Get(), record.data(), record.size(), static_cast<off_t>(at));
        if (count < 0 && errno == EINTR)
            continue;
        m_hasFailed = count <= 0;
        if (!m_hasFailed) {
            at += static_cast<uint64_t>(count);
            record = record.subspan(static_cast<size_t>(count));
        }
    }
    if (m_hasFailed)
        return false;
    m_bytes = at;
    // A failure of that is one of the next record: this one is there.
    if (m_bytes - m_flushedBytes > kMostUnflushedBytes)
        Flush();
    return true;
}

bool CRecordFile::AppendFrom(const CRecordFile& other, uint64_t& begin, uint64_t most)
{
    std::vector<uint8_t> record;
    const uint64_t end = begin + std::min(most, other.m_bytes - begin);
    for (; begin < end && !m_hasFailed; begin += record.size()) {
        record.resize(kJournalRecordHeader);
        m_hasFailed = !ReadAt(other.m_file.Get(), begin, record);
        record.resize(m_hasFailed ? 0 : RecordBytes(record));
        m_hasFailed = m_hasFailed || !ReadAt(other.m_file.Get(), begin, record);
        if (!m_hasFailed)
            Append(m_packer.Renumber(record));
    }
    return !m_hasFailed;
}

bool CRecordFile::Flush()
{
    m_hasFailed = m_hasFailed || ::fdatasync(m_file.Get()) != 0;
    m_flushedBytes = m_bytes;
    return !m_hasFailed;
}

std::shared_ptr<CJournalTarget> CJournalTarget::Open(const fs::path& path, const JournalExtent& extent)
{
    CFileDescriptor file = OpenFile(path, O_RDWR | O_CREAT);
    // What stands behind the last whole entry would make the records after it look damaged.
    if (!file.IsOpen() || ::ftruncate(file.Get(), static_cast<off_t>(extent.bytes)) != 0)
        return nullptr;
    auto records = std::make_unique<CRecordFile>(std::move(file), extent.bytes, extent.records);
    if (extent.bytes == 0 && !records->Append(JournalName()))
        return nullptr;
    // How much of an old one is history that has gone nobody knows.
    return std::make_shared<CJournalTarget>(path, std::move(records), extent.bytes == 0 ? 0 : 1);
}

CJournalTarget::CJournalTarget(fs::path path, std::unique_ptr<CRecordFile> file, uint64_t newBytes)
    : m_path(std::move(path)), m_anewPath(m_path.string() + ".new"), m_file(std::move(file)),
      m_bytes(m_file->Bytes()), m_newBytes(newBytes)
{
}

void CJournalTarget::Append(std::span<const uint8_t> piece, EntryEnd end)
{
    m_unflushedEntries += end == EntryEnd::Yes ? 1 : 0;
    if (!m_hasFailed && m_file->Append(piece, end)) {
        m_bytes = m_file->Bytes();
        if (end == EntryEnd::Yes && m_newBytes == 0)
            m_newBytes = m_bytes.load();
        return;
    }
    m_hasFailed = true;
    if (!m_anew)
        return;
    m_kept.push_back({{piece.begin(), piece.end()}, end});
    m_keptBytes += piece.size();
    if (m_keptBytes > kMostKeptBytes)
        AbandonRewrite();
}

void CJournalTarget::Flush()
{
    if (!m_file->Flush())
        m_hasFailed = true;
    if (!m_hasFailed)
        NoteEntriesOnDisk();
}

void CJournalTarget::BeginRewrite(JournalGap gap)
{
    AbandonRewrite();
    if (gap == JournalGap::Yes)
        m_hasFailed = true;
    const std::lock_guard lock(m_place);
    CFileDescriptor file =
        m_isRemoved ? CFileDescriptor(-1) : OpenFile(m_anewPath, O_RDWR | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) {
        PostponeRewrite();
        return;
    }
    m_anew = std::make_unique<CRecordFile>(std::move(file), 0, 0);
    m_anew->Append(JournalName());
    m_mark = m_file->Bytes();
    m_toldBytes = 0;
}

void CJournalTarget::AppendAnew(std::span<const uint8_t> piece, EntryEnd end)
{
    if (m_anew && !m_anew->Append(piece, end)) {
        AbandonRewrite();
        PostponeRewrite();
    }
}

bool CJournalTarget::TakePlace()
{
    const std::lock_guard lock(m_place);
    return !m_isRemoved && ::rename(m_anewPath.c_str(), m_path.c_str()) == 0;
}

bool CJournalTarget::GoOnFinishing()
{
    if (m_anew) {
        if (m_toldBytes == 0)
            m_toldBytes = m_anew->Bytes();
        if (m_anew->AppendFrom(*m_file, m_mark, kTakenOverBytes) && m_mark < m_file->Bytes())
            return false;
        FinishRewrite();
    }
    --m_awaitedRewrites;
    return true;
}

void CJournalTarget::FinishRewrite()
{
    for (const Kept& kept : m_kept)
        m_anew->Append(kept.piece, kept.end);
    if (!m_anew->Flush() || !TakePlace()) {
        AbandonRewrite();
        PostponeRewrite();
        return;
    }
    // Until the folder is on the disk as well, the old journal is there, which is as good.
    const CFileDescriptor folder = OpenFile(m_path.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder.IsOpen())
        ::fsync(folder.Get());
    m_file = std::move(m_anew);
    m_kept.clear();
    m_keptBytes = 0;
    m_bytes = m_file->Bytes();
    m_newBytes = m_toldBytes;
    m_hasFailed = false;
    NoteEntriesOnDisk();
}

void CJournalTarget::AbandonRewrite() noexcept
{
    if (!m_anew)
        return;
    ::unlink(m_anewPath.c_str());
    m_anew = nullptr;
    m_kept.clear();
    m_keptBytes = 0;
}

void CJournalTarget::GiveUp() noexcept
{
    m_hasFailed = true;
    AbandonRewrite();
}

bool CJournalTarget::WantsRewrite() const
{
    const uint64_t newBytes = m_newBytes;
    const bool isLong =
        newBytes != 0 && m_bytes > std::max(kLeastRewrittenBytes, kMostJournalGrowth * newBytes);
    return (isLong || m_hasFailed) && m_awaitedRewrites == 0 &&
           std::chrono::steady_clock::now() >= m_rewriteFrom.load();
}

void CJournalTarget::PostponeRewrite()
{
    m_rewriteFrom = std::chrono::steady_clock::now() + kPause;
}

void CJournalTarget::Remove()
{
    const std::lock_guard lock(m_place);
    m_isRemoved = true;
    std::error_code error;
    fs::remove(m_anewPath, error);
    fs::remove(m_path, error);
}
