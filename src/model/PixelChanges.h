// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ChangedTiles.h"
#include "platform/codec/Zstd.h"
#include "platform/dib/PackedDib.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

/// What turns a picture into another one of the same size and depth, and that one back: runs of 32-bit words
/// over the stored rows, each word the exclusive or of both pictures' words. Pixels that do not differ cost
/// nothing.
class CPixelChanges {
public:
    /// Two changes after one another as one; none when memory runs out.
    [[nodiscard]] static std::optional<CPixelChanges> Joined(const CPixelChanges& first,
                                                             const CPixelChanges& second);

    /// Turns either of the two pictures into the other. Needs no memory. touched: gets what changes, unless
    /// there is none.
    void Apply(CPackedDib& picture, CChangedTiles* touched = nullptr) const;
    /// Calls visit(firstWord, words) for each run in ascending order.
    void ForEachRun(const std::function<void(size_t first, size_t words)>& visit) const;

    [[nodiscard]] size_t HeldBytes() const { return m_stream.Size(); }
    [[nodiscard]] bool IsPacked() const { return static_cast<bool>(m_unpacker); }
    /// Goes on packing, one piece a call; false when there is nothing more to do. What would save less than a
    /// quarter stays as it is. `unpacker` reads the packed words from then on.
    [[nodiscard]] bool PackPiece(CZstdPacker& packer, const Ref<CZstdReader>& unpacker);

private:
    friend class CPixelChangesBuilder;
    friend class CPixelChangesReader;
    class CWords;

    /// Runs one after another: the first word's index, the number of words, the words.
    CHeapBlock m_stream;
    size_t m_unpackedBytes = 0;
    Ref<CZstdReader> m_unpacker; ///< none: the stream is not packed
    /// While it is being packed: frames, their bytes, and the bytes of the stream that they stand for.
    CHeapBlock m_frames;
    size_t m_frameBytes = 0;
    size_t m_packedBytes = 0;
};

/// Reads the runs of changes, packed or not, as the bytes that they are kept in: 32-bit words, for each run
/// the index of the first word, the number of words, the words. The changes must stay as they are until the
/// end.
class CPixelChangesReader {
public:
    explicit CPixelChangesReader(const CPixelChanges& changes);
    [[nodiscard]] bool IsPacked() const { return static_cast<bool>(m_unpacker); }
    [[nodiscard]] size_t Left() const { return m_left; }
    /// The next bytes, as many as there is room for, which must be left; false when memory runs out.
    [[nodiscard]] bool Read(std::span<uint8_t> bytes);

private:
    std::span<const uint8_t> m_stream;
    size_t m_left;
    Ref<CZstdReader> m_unpacker; ///< none: the stream is not packed
};

/// Collects changes, run by run from the bottom row up.
class CPixelChangesBuilder {
public:
    /// Gives up when the changes need more than `limitBytes`.
    explicit CPixelChangesBuilder(size_t limitBytes = SIZE_MAX) : m_limit(limitBytes) {}

    /// Compares two stretches of words that begin at the index `first` of both pictures' rows. False when
    /// there are too many changes, or memory runs out.
    [[nodiscard]] bool Compare(size_t first, const uint32_t* a, const uint32_t* b, size_t words);
    /// Adds a run of words already known to differ.
    [[nodiscard]] bool Add(size_t first, const uint32_t* a, const uint32_t* b, size_t words);
    /// None when memory runs out.
    [[nodiscard]] std::optional<CPixelChanges> Finish();

private:
    [[nodiscard]] uint32_t* Extend(size_t words);

    size_t m_limit;
    CHeapBlock m_stream;
    size_t m_used = 0;
};

/// Whether two pictures differ in nothing but the bits of their rows; none is not like any other.
[[nodiscard]] bool HaveOneLayout(const CPackedDib& a, const CPackedDib& b);

/// Calls visit(first, words) for each run in which the stretches differ; equal words between two runs cost
/// less than another run when they are few, and belong to it then. Stops when visit returns false, and
/// returns whether it never did.
template <typename Visit>
bool VisitDifferences(const uint32_t* a, const uint32_t* b, size_t words, Visit visit)
{
    constexpr size_t kBlock = 64;
    constexpr size_t kGap = 8;
    const auto blockDiffers = [&](size_t at) {
        uint32_t difference = 0;
        for (size_t i = at; i < at + kBlock; ++i)
            difference |= a[i] ^ b[i];
        return difference != 0;
    };
    for (size_t at = 0; at < words;) {
        if (at + kBlock <= words && !blockDiffers(at)) {
            at += kBlock;
            continue;
        }
        const size_t stop = at + kBlock < words ? at + kBlock : words;
        while (at < stop && a[at] == b[at])
            ++at;
        if (at == stop)
            continue;
        const size_t begin = at;
        size_t end = at + 1;
        for (size_t probe = end; probe < words && probe < end + kGap; ++probe) {
            if (a[probe] != b[probe])
                end = probe + 1;
        }
        if (!visit(begin, end - begin))
            return false;
        at = end;
    }
    return true;
}
