// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ConnectedArea.h"

#include <bit>
#include <deque>
#include <vector>

namespace {

constexpr int kBlockRows = 64; ///< as many as a word has bits
constexpr int kStripWords = 64;
constexpr int kMatchedWords = 4; ///< words of a row that are matched together

constexpr int StripsFor(int words)
{
    return (words + kStripWords - 1) / kStripWords;
}

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

/// The search for one connected area. Calls visit(y, word, bits) for pixels as they are found; each one once.
template <typename Visit> class CSearch {
public:
    CSearch(const CPackedDib& dib, const PixelRange& range, const CRegion& clip, Visit visit)
        : m_picture(ViewOf(dib)), m_range(range), m_clip(clip), m_visit(visit),
          m_wordsPerRow(WordsFor(dib.Width())),
          m_blocksPerStrip((dib.Height() + kBlockRows - 1) / kBlockRows),
          m_open(CPixelSet::Create(dib.Size(), BlockContent::Undefined)),
          m_found(CPixelSet::Create(dib.Size()))
    {
        const auto strips = static_cast<size_t>(StripsFor(m_wordsPerRow));
        m_rows = CHeapBlock::Allocate(strips * static_cast<size_t>(dib.Height()) * sizeof(BlockRow));
        if (!HasMemory())
            return;
        m_openWords = m_open.Row(0).data();
        m_foundWords = m_found.Row(0).data();
        m_blockRows = reinterpret_cast<BlockRow*>(m_rows.Data());
        m_blocks.resize(strips * static_cast<size_t>(m_blocksPerStrip));
    }

    bool HasMemory() const { return !m_open.IsEmpty() && !m_found.IsEmpty() && !m_rows.IsEmpty(); }

    CPixelSet Run(Point seed)
    {
        const int word = seed.x / kBitsPerWord;
        const uint64_t bit = uint64_t{1} << (seed.x % kBitsPerWord);
        Match(seed.y, word);
        Open(seed.y, word) |= bit;
        m_top = seed.y;
        m_bottom = seed.y + 1;
        Absorb(seed.y, word, bit);
        while (!m_queue.empty()) {
            const size_t index = m_queue.front();
            m_queue.pop_front();
            Settle(index);
            m_blocks[index].queued = false;
        }
        m_found.SetRows(m_top, m_bottom);
        return std::move(m_found);
    }

private:
    /// 64 rows of one strip of 64 words.
    struct Block {
        uint64_t pendingRows = 0;
        bool queued = false;
    };
    /// One row of a block.
    struct BlockRow {
        uint64_t pendingWords; ///< words to be looked at
        uint64_t matchedParts; ///< parts of kMatchedWords that have been matched
    };

    size_t Index(int y, int word) const
    {
        return static_cast<size_t>(y) * static_cast<size_t>(m_wordsPerRow) + static_cast<size_t>(word);
    }
    uint64_t& Open(int y, int word) { return m_openWords[Index(y, word)]; }
    uint64_t& Found(int y, int word) { return m_foundWords[Index(y, word)]; }
    BlockRow& RowOf(int y, int word)
    {
        return m_blockRows[static_cast<size_t>(word / kStripWords) * static_cast<size_t>(m_picture.height) +
                           static_cast<size_t>(y)];
    }
    size_t BlockIndex(int y, int word) const
    {
        return static_cast<size_t>(word / kStripWords) * static_cast<size_t>(m_blocksPerStrip) +
               static_cast<size_t>(y / kBlockRows);
    }

    /// Makes sure that the word has been matched.
    void Match(int y, int word)
    {
        uint64_t& matched = RowOf(y, word).matchedParts;
        const uint64_t part = uint64_t{1} << (word % kStripWords / kMatchedWords);
        if ((matched & part) != 0)
            return;
        matched |= part;
        const int first = word / kMatchedWords * kMatchedWords;
        const int count = std::min(kMatchedWords, m_wordsPerRow - first);
        Prefetch(y + (m_down ? 2 : -2), first, count);
        MatchPixels(m_picture, y, first * kBitsPerWord, {&Open(y, first), static_cast<size_t>(count)},
                    m_range, m_clip);
    }

    /// Fetches pixels of a row that the search will come to soon: it works down or up in columns, and the
    /// processor guesses only what lies in one row.
    void Prefetch(int y, int word, int count) const
    {
        if (y < 0 || y >= m_picture.height)
            return;
        constexpr ptrdiff_t kCacheLine = 64;
        const uint8_t* const first = m_picture.Row(y) + ptrdiff_t{word} * kBitsPerWord * 4;
        for (ptrdiff_t at = 0; at < ptrdiff_t{count} * kBitsPerWord * 4; at += kCacheLine)
            __builtin_prefetch(first + at);
    }

    /// Adds the runs of the word that hold a seed, and sets its neighbours to work.
    void Absorb(int y, int word, uint64_t seeds)
    {
        const uint64_t added = FillRuns(Open(y, word), seeds);
        Found(y, word) |= added;
        m_visit(y, word, added);
        if (y > 0)
            Offer(y - 1, word, added);
        if (y + 1 < m_picture.height)
            Offer(y + 1, word, added);
        if (word > 0)
            Offer(y, word - 1, added << (kBitsPerWord - 1));
        if (word + 1 < m_wordsPerRow)
            Offer(y, word + 1, added >> (kBitsPerWord - 1));
    }

    /// Notes a word to be looked at when it can take some of the bits.
    void Offer(int y, int word, uint64_t bits)
    {
        bits &= ~Found(y, word);
        if (bits == 0)
            return;
        Match(y, word);
        if ((bits & Open(y, word)) == 0)
            return;
        const size_t index = BlockIndex(y, word);
        Block& block = m_blocks[index];
        RowOf(y, word).pendingWords |= uint64_t{1} << (word % kStripWords);
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
        m_down = true;
        int at = 0;
        while (block.pendingRows != 0) {
            const uint64_t ahead =
                block.pendingRows & (m_down ? kAllBits << at : kAllBits >> (kBitsPerWord - 1 - at));
            if (ahead == 0) {
                m_down = !m_down;
                continue;
            }
            at = m_down ? std::countr_zero(ahead) : kBitsPerWord - 1 - std::countl_zero(ahead);
            SettleRow(strip, top + at);
            m_top = std::min(m_top, top + at);
            m_bottom = std::max(m_bottom, top + at + 1);
            block.pendingRows &= ~(uint64_t{1} << at);
        }
    }

    void SettleRow(int strip, int y)
    {
        uint64_t& pending = RowOf(y, strip * kStripWords).pendingWords;
        while (pending != 0) {
            const int word = strip * kStripWords + std::countr_zero(pending);
            pending &= pending - 1;
            uint64_t seeds = (y > 0 ? Found(y - 1, word) : 0) |
                             (y + 1 < m_picture.height ? Found(y + 1, word) : 0) |
                             (word > 0 ? Found(y, word - 1) >> (kBitsPerWord - 1) : 0) |
                             (word + 1 < m_wordsPerRow ? Found(y, word + 1) << (kBitsPerWord - 1) : 0);
            seeds &= Open(y, word) & ~Found(y, word);
            if (seeds != 0)
                Absorb(y, word, seeds);
        }
    }

    ConstBitmapView m_picture;
    PixelRange m_range;
    const CRegion& m_clip;
    Visit m_visit;
    int m_wordsPerRow;
    int m_blocksPerStrip;
    CPixelSet m_open;  ///< pixels that match, as far as their blocks have been reached
    CPixelSet m_found; ///< in every word, whole runs of m_open
    CHeapBlock m_rows;
    uint64_t* m_openWords = nullptr;
    uint64_t* m_foundWords = nullptr;
    BlockRow* m_blockRows = nullptr;
    int m_top = 0; ///< rows in which pixels have been found
    int m_bottom = 0;
    std::vector<Block> m_blocks;
    std::deque<size_t> m_queue;
    bool m_down = true; ///< which way the rows of a block are being worked off
};

} // namespace

CPixelSet CPixelSet::Create(::Size size, BlockContent content)
{
    CPixelSet set;
    set.m_size = size;
    set.m_bottom = size.height;
    set.m_wordsPerRow = static_cast<size_t>(WordsFor(size.width));
    set.m_block = CHeapBlock::Allocate(
        set.m_wordsPerRow * static_cast<size_t>(size.height) * sizeof(uint64_t), 0, content);
    return set;
}

CPixelSet FindConnected(const CPackedDib& dib, const PixelRange& range, Point seed, const CRegion& clip)
{
    CSearch search(dib, range, clip, [](int, int, uint64_t) {});
    return search.HasMemory() ? search.Run(seed) : CPixelSet();
}

bool PaintConnected(CPackedDib& dib, const PixelRange& range, Point seed, const CRegion& clip,
                    const CFillBrush& brush)
{
    const BitmapView picture = ViewOf(dib);
    CSearch search(dib, range, clip, [&](int y, int word, uint64_t bits) {
        uint8_t* const pixels = picture.Row(y) + ptrdiff_t{word} * kBitsPerWord * 4;
        VisitRuns(std::span(&bits, 1),
                  [&](int from, int to) { brush.PaintRun(pixels + ptrdiff_t{from} * 4, to - from); });
    });
    return search.HasMemory() && !search.Run(seed).IsEmpty();
}
