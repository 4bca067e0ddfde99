// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PixelChanges.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>

namespace {

constexpr size_t kRunHeader = 2; ///< words
constexpr size_t kWordBytes = sizeof(uint32_t);

std::span<uint8_t> BytesOf(std::span<uint32_t> words)
{
    return {reinterpret_cast<uint8_t*>(words.data()), words.size_bytes()};
}

} // namespace

/// Reads the stream from its begin, packed or not.
class CPixelChanges::CWords {
public:
    explicit CWords(const CPixelChanges& changes)
        : m_changes(changes), m_left(changes.m_unpackedBytes / kWordBytes)
    {
        if (changes.IsPacked())
            changes.m_unpacker->Begin(changes.m_stream.Bytes());
    }

    void Read(std::span<uint32_t> words)
    {
        if (m_changes.IsPacked()) {
            // What was packed has been read once, so neither the data nor memory can fail.
            [[maybe_unused]] const bool isRead = m_changes.m_unpacker->Read(BytesOf(words));
            assert(isRead);
        } else {
            const size_t at = m_changes.m_unpackedBytes - m_left * kWordBytes;
            std::memcpy(words.data(), m_changes.m_stream.Data() + at, words.size_bytes());
        }
        m_left -= words.size();
    }

    /// The next run's first word and number of words; false at the end.
    bool NextRun(std::array<uint32_t, kRunHeader>& run)
    {
        if (m_left == 0)
            return false;
        Read(run);
        return true;
    }

    /// Calls use(first, words) for pieces of the run.
    template <typename Use> void ReadRun(const std::array<uint32_t, kRunHeader>& run, Use use)
    {
        std::array<uint32_t, 1024> buffer;
        for (size_t done = 0; done < run[1];) {
            const std::span<uint32_t> piece = std::span(buffer).first(std::min(buffer.size(), run[1] - done));
            Read(piece);
            use(run[0] + done, std::span<const uint32_t>(piece));
            done += piece.size();
        }
    }

private:
    const CPixelChanges& m_changes;
    size_t m_left; ///< words
};

std::optional<CPixelChanges> CPixelChanges::Joined(const CPixelChanges& first, const CPixelChanges& second)
{
    // Both as pictures of changes: only the words between the first and the last of either matter.
    size_t begin = SIZE_MAX;
    size_t end = 0;
    for (const CPixelChanges* changes : {&first, &second}) {
        changes->ForEachRun([&](size_t at, size_t words) {
            begin = std::min(begin, at);
            end = std::max(end, at + words);
        });
    }
    if (begin >= end)
        return CPixelChangesBuilder().Finish();
    CHeapBlock sum = CHeapBlock::Allocate((end - begin) * kWordBytes);
    if (sum.IsEmpty())
        return std::nullopt;
    auto* const differences = reinterpret_cast<uint32_t*>(sum.Data());
    for (const CPixelChanges* changes : {&first, &second}) {
        CWords words(*changes);
        std::array<uint32_t, kRunHeader> run;
        while (words.NextRun(run)) {
            words.ReadRun(run, [&](size_t at, std::span<const uint32_t> piece) {
                for (size_t i = 0; i < piece.size(); ++i)
                    differences[at - begin + i] ^= piece[i];
            });
        }
    }
    constexpr size_t kPiece = 4096;
    static constexpr std::array<uint32_t, kPiece> kNothing{};
    CPixelChangesBuilder builder;
    for (size_t at = begin; at < end; at += kPiece) {
        if (!builder.Compare(at, differences + (at - begin), kNothing.data(), std::min(kPiece, end - at)))
            return std::nullopt;
    }
    return builder.Finish();
}

void CPixelChanges::Apply(CPackedDib& picture, CChangedTiles* touched) const
{
    auto* const pixels = reinterpret_cast<uint32_t*>(picture.Bits().data());
    CWords words(*this);
    std::array<uint32_t, kRunHeader> run;
    while (words.NextRun(run)) {
        if (touched != nullptr)
            touched->Add(run[0], run[1]);
        words.ReadRun(run, [&](size_t at, std::span<const uint32_t> piece) {
            assert((at + piece.size()) * kWordBytes <= picture.Bits().size());
            for (size_t i = 0; i < piece.size(); ++i)
                pixels[at + i] ^= piece[i];
        });
    }
}

void CPixelChanges::ForEachRun(const std::function<void(size_t first, size_t words)>& visit) const
{
    CWords words(*this);
    std::array<uint32_t, kRunHeader> run;
    while (words.NextRun(run)) {
        visit(run[0], run[1]);
        words.ReadRun(run, [](size_t, std::span<const uint32_t>) {});
    }
}

bool CPixelChanges::PackPiece(CZstdPacker& packer, const Ref<CZstdReader>& unpacker)
{
    if (IsPacked() || !unpacker->IsReady())
        return false;
    if (m_frames.IsEmpty())
        m_frames = CHeapBlock::Allocate(m_stream.Size() / 4 * 3, 0, BlockContent::Undefined);
    if (m_frames.IsEmpty())
        return false;
    const size_t size = std::min(kZstdPiece, m_stream.Size() - m_packedBytes);
    const size_t frame = packer.PackPiece(m_stream.Bytes().subspan(m_packedBytes, size),
                                          m_frames.Bytes().subspan(m_frameBytes));
    m_frameBytes += frame;
    m_packedBytes += size;
    if (frame != 0 && m_packedBytes < m_stream.Size())
        return true;
    CHeapBlock exact;
    if (frame != 0)
        exact = CHeapBlock::Allocate(m_frameBytes, 0, BlockContent::Undefined);
    if (!exact.IsEmpty()) {
        std::memcpy(exact.Data(), m_frames.Data(), m_frameBytes);
        m_stream = std::move(exact);
        m_unpacker = unpacker;
    }
    m_frames = {};
    return false;
}

CPixelChangesReader::CPixelChangesReader(const CPixelChanges& changes)
    : m_stream(changes.m_stream.Bytes()), m_left(changes.m_unpackedBytes)
{
    if (!changes.IsPacked())
        return;
    // Undo may use the other one meanwhile.
    m_unpacker = MakeShared<CZstdReader>();
    m_unpacker->Begin(m_stream);
}

bool CPixelChangesReader::Read(std::span<uint8_t> bytes)
{
    assert(bytes.size() <= m_left);
    m_left -= bytes.size();
    if (m_unpacker)
        return m_unpacker->Read(bytes);
    if (!bytes.empty())
        std::memcpy(bytes.data(), m_stream.data(), bytes.size());
    m_stream = m_stream.subspan(bytes.size());
    return true;
}

uint32_t* CPixelChangesBuilder::Extend(size_t words)
{
    const size_t bytes = words * kWordBytes;
    if (bytes > m_limit - std::min(m_limit, m_used))
        return nullptr;
    if (m_used + bytes > m_stream.Size()) {
        constexpr size_t kLeast = 4096;
        CHeapBlock larger =
            CHeapBlock::Allocate(std::max(kLeast, (m_used + bytes) / 2 * 3), 0, BlockContent::Undefined);
        if (larger.IsEmpty())
            return nullptr;
        if (m_used > 0)
            std::memcpy(larger.Data(), m_stream.Data(), m_used);
        m_stream = std::move(larger);
    }
    auto* const room = reinterpret_cast<uint32_t*>(m_stream.Data() + m_used);
    m_used += bytes;
    return room;
}

bool CPixelChangesBuilder::Add(size_t first, const uint32_t* a, const uint32_t* b, size_t words)
{
    uint32_t* const room = Extend(kRunHeader + words);
    if (room == nullptr)
        return false;
    room[0] = static_cast<uint32_t>(first);
    room[1] = static_cast<uint32_t>(words);
    for (size_t i = 0; i < words; ++i)
        room[kRunHeader + i] = a[i] ^ b[i];
    return true;
}

bool CPixelChangesBuilder::Compare(size_t first, const uint32_t* a, const uint32_t* b, size_t words)
{
    return VisitDifferences(a, b, words,
                            [&](size_t at, size_t count) { return Add(first + at, a + at, b + at, count); });
}

std::optional<CPixelChanges> CPixelChangesBuilder::Finish()
{
    CPixelChanges changes;
    changes.m_unpackedBytes = m_used;
    changes.m_stream = CHeapBlock::Allocate(m_used, 0, BlockContent::Undefined);
    if (changes.m_stream.IsEmpty())
        return std::nullopt;
    if (m_used > 0)
        std::memcpy(changes.m_stream.Data(), m_stream.Data(), m_used);
    return changes;
}

bool HaveOneLayout(const CPackedDib& a, const CPackedDib& b)
{
    if (a.IsEmpty() || b.IsEmpty() || a.Block().size() != b.Block().size() ||
        a.Bits().size() != b.Bits().size())
        return false;
    return std::memcmp(a.Block().data(), b.Block().data(), a.Block().size() - a.Bits().size()) == 0;
}
