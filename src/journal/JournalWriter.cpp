// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalWriter.h"

#include "platform/io/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <span>

class CJournalTarget {
public:
    CJournalTarget(int file, uint64_t size, uint32_t records) : m_file(file), m_size(size), m_packer(records)
    {
    }

    [[nodiscard]] bool IsOpen() const { return m_file.IsOpen(); }
    /// After a failure, a full disk for one, the file stays as it was before and takes nothing more.
    bool Append(std::span<const uint8_t> bytes)
    {
        while (!bytes.empty() && !m_hasFailed) {
            const ssize_t count =
                ::pwrite(m_file.Get(), bytes.data(), bytes.size(), static_cast<off_t>(m_size));
            if (count < 0 && errno == EINTR)
                continue;
            m_hasFailed = count <= 0;
            if (!m_hasFailed) {
                m_size += static_cast<uint64_t>(count);
                bytes = bytes.subspan(static_cast<size_t>(count));
            }
        }
        return !m_hasFailed;
    }
    void Append(std::span<const uint8_t> piece, EntryEnd end) { Append(m_packer.Pack(piece, end)); }
    void Flush() const { ::fdatasync(m_file.Get()); }

private:
    CFileDescriptor m_file;
    uint64_t m_size;
    CJournalPacker m_packer;
    bool m_hasFailed = false;
};

CJournalWriter::CJournalWriter() : m_thread([this] { Run(); }) {}

CJournalWriter::~CJournalWriter()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

std::shared_ptr<CJournalTarget> CJournalWriter::Open(const std::filesystem::path& path,
                                                     const JournalExtent& extent)
{
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    auto target = std::make_shared<CJournalTarget>(file, extent.bytes, extent.records);
    // What stands behind the last whole entry would make the records after it look damaged.
    if (!target->IsOpen() || ::ftruncate(file, static_cast<off_t>(extent.bytes)) != 0)
        return nullptr;
    if (extent.bytes == 0 && !target->Append(JournalName()))
        return nullptr;
    return target;
}

void CJournalWriter::Write(std::shared_ptr<CJournalTarget> target, std::vector<uint8_t> piece, EntryEnd end)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waitingBytes += piece.size();
        m_pieces.push_back({std::move(target), std::move(piece), end});
    }
    m_wake.notify_one();
}

void CJournalWriter::Drain()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_pieces.empty() && !m_isWriting; });
}

void CJournalWriter::Run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_isWriting = false;
        if (m_pieces.empty())
            m_idle.notify_all();
        m_wake.wait(lock, [this] { return m_ends || !m_pieces.empty(); });
        if (m_pieces.empty())
            return;
        m_isWriting = true;
        std::vector<Piece> pieces = std::exchange(m_pieces, {});
        lock.unlock();
        WriteAll(std::move(pieces));
        lock.lock();
    }
}

void CJournalWriter::WriteAll(std::vector<Piece> pieces)
{
    std::set<CJournalTarget*> written;
    for (Piece& piece : pieces) {
        piece.target->Append(piece.bytes, piece.end);
        written.insert(piece.target.get());
        m_waitingBytes -= piece.bytes.size();
        piece.bytes = {};
    }
    for (const CJournalTarget* target : written)
        target->Flush();
}
