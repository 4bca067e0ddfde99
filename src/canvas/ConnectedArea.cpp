// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ConnectedArea.h"

#include <bit>
#include <deque>
#include <vector>

namespace {

constexpr int kBlockRows = 64; ///< as many as a word has bits

/// All runs of `open` that hold a bit of `seeds`, which lies within `open`.
uint64_t FillRuns(uint64_t open, uint64_t seeds)
{
    if (open == kAllBits)
        return kAllBits;
    // A sum carries through the ones above each seed.
    uint64_t filled = seeds | (((seeds + open) ^ open) & open);
    // Downward there is no carry: distances double instead.
    uint64_t passable = open;
    for (int distance = 1; distance < kBitsPerWord; distance *= 2) {
        filled |= passable & (filled >> distance);
        passable &= passable >> distance;
    }
    return filled;
}

/// The search for one connected area.
class CSearch {
public:
    CSearch(const CPackedDib& dib, const PixelRange& range, const CRegion& clip)
        : m_dib(dib), m_range(range), m_clip(clip), m_wordsPerRow(WordsFor(dib.Width())),
          m_blocksPerStrip((dib.Height() + kBlockRows - 1) / kBlockRows),
          m_open(CPixelSet::Create(dib.Size())), m_found(CPixelSet::Create(dib.Size()))
    {
        const auto strips = static_cast<size_t>(StripsFor(dib.Width()));
        m_pendingWords = CHeapBlock::Allocate(strips * static_cast<size_t>(dib.Height()) * sizeof(uint64_t));
        m_blocks.resize(strips * static_cast<size_t>(m_blocksPerStrip));
    }

    bool HasMemory() const { return !m_open.IsEmpty() && !m_found.IsEmpty() && !m_pendingWords.IsEmpty(); }

    CPixelSet Run(Point seed)
    {
        const int word = seed.x / kBitsPerWord;
        const uint64_t bit = uint64_t{1} << (seed.x % kBitsPerWord);
        Match(seed.y, word);
        Open(seed.y, word) |= bit;
        Absorb(seed.y, word, bit);
        while (!m_queue.empty()) {
            const size_t index = m_queue.front();
            m_queue.pop_front();
            Settle(index);
            m_blocks[index].queued = false;
        }
        return std::move(m_found);
    }

private:
    /// 64 rows of one strip.
    struct Block {
        uint64_t pendingRows = 0;
        bool queued = false;
        bool matched = false;
    };

    uint64_t& Open(int y, int word) { return m_open.Row(y)[static_cast<size_t>(word)]; }
    uint64_t& Found(int y, int word) { return m_found.Row(y)[static_cast<size_t>(word)]; }
    /// Bit n: word n of the row's strip is to be looked at.
    uint64_t& PendingWords(int strip, int y)
    {
        return reinterpret_cast<uint64_t*>(
            m_pendingWords.Data())[static_cast<size_t>(strip) * static_cast<size_t>(m_dib.Height()) +
                                   static_cast<size_t>(y)];
    }
    size_t BlockIndex(int y, int word) const
    {
        return static_cast<size_t>(word / kStripWords) * static_cast<size_t>(m_blocksPerStrip) +
               static_cast<size_t>(y / kBlockRows);
    }

    /// Makes sure that the word's block has been matched.
    void Match(int y, int word)
    {
        Block& block = m_blocks[BlockIndex(y, word)];
        if (block.matched)
            return;
        block.matched = true;
        const int strip = word / kStripWords;
        const int top = y / kBlockRows * kBlockRows;
        const int bottom = std::min(top + kBlockRows, m_dib.Height());
        for (int row = top; row < bottom; ++row)
            (void)MatchStrip(m_dib, row, strip, m_range, m_clip, &Open(row, strip * kStripWords));
    }

    /// Adds the runs of the word that hold a seed, and sets its neighbours to work.
    void Absorb(int y, int word, uint64_t seeds)
    {
        const uint64_t added = FillRuns(Open(y, word), seeds);
        Found(y, word) |= added;
        if (y > 0)
            Offer(y - 1, word, added);
        if (y + 1 < m_dib.Height())
            Offer(y + 1, word, added);
        if (word > 0)
            Offer(y, word - 1, added << (kBitsPerWord - 1));
        if (word + 1 < m_wordsPerRow)
            Offer(y, word + 1, added >> (kBitsPerWord - 1));
    }

    /// Notes a word to be looked at when it can take some of the bits.
    void Offer(int y, int word, uint64_t bits)
    {
        if (bits == 0)
            return;
        const size_t index = BlockIndex(y, word);
        Block& block = m_blocks[index];
        if (!block.matched)
            Match(y, word);
        if ((bits & Open(y, word) & ~Found(y, word)) == 0)
            return;
        PendingWords(word / kStripWords, y) |= uint64_t{1} << (word % kStripWords);
        block.pendingRows |= uint64_t{1} << (y % kBlockRows);
        if (!block.queued) {
            block.queued = true;
            m_queue.push_back(index);
        }
    }

    /// Works off a block's rows, downward and upward in turns.
    void Settle(size_t index)
    {
        Block& block = m_blocks[index];
        const int strip = static_cast<int>(index / static_cast<size_t>(m_blocksPerStrip));
        const int top = static_cast<int>(index % static_cast<size_t>(m_blocksPerStrip)) * kBlockRows;
        bool down = true;
        int at = 0;
        while (block.pendingRows != 0) {
            const uint64_t ahead =
                block.pendingRows & (down ? kAllBits << at : kAllBits >> (kBitsPerWord - 1 - at));
            if (ahead == 0) {
                down = !down;
                continue;
            }
            at = down ? std::countr_zero(ahead) : kBitsPerWord - 1 - std::countl_zero(ahead);
            SettleRow(strip, top + at);
            block.pendingRows &= ~(uint64_t{1} << at);
        }
    }

    void SettleRow(int strip, int y)
    {
        uint64_t& pending = PendingWords(strip, y);
        while (pending != 0) {
            const int word = strip * kStripWords + std::countr_zero(pending);
            pending &= pending - 1;
            uint64_t seeds = (y > 0 ? Found(y - 1, word) : 0) |
                             (y + 1 < m_dib.Height() ? Found(y + 1, word) : 0) |
                             (word > 0 ? Found(y, word - 1) >> (kBitsPerWord - 1) : 0) |
                             (word + 1 < m_wordsPerRow ? Found(y, word + 1) << (kBitsPerWord - 1) : 0);
            seeds &= Open(y, word) & ~Found(y, word);
            if (seeds != 0)
                Absorb(y, word, seeds);
        }
    }

    const CPackedDib& m_dib;
    PixelRange m_range;
    const CRegion& m_clip;
    int m_wordsPerRow;
    int m_blocksPerStrip;
    CPixelSet m_open;  ///< pixels that match, as far as their blocks have been reached
    CPixelSet m_found; ///< in every word, whole runs of m_open
    CHeapBlock m_pendingWords;
    std::vector<Block> m_blocks;
    std::deque<size_t> m_queue;
};

} // namespace

CPixelSet CPixelSet::Create(::Size size)
{
    CPixelSet set;
    set.m_size = size;
    set.m_wordsPerRow = static_cast<size_t>(WordsFor(size.width));
    set.m_block =
        CHeapBlock::Allocate(set.m_wordsPerRow * static_cast<size_t>(size.height) * sizeof(uint64_t));
    return set;
}

CPixelSet FindConnected(const CPackedDib& dib, const PixelRange& range, Point seed, const CRegion& clip)
{
    CSearch search(dib, range, clip);
    if (!search.HasMemory())
        return {};
    return search.Run(seed);
}
