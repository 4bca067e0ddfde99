// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/OutlineBits.h"

#include "canvas/BitRuns.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace {

constexpr uint32_t kWhite = 0xFFFFFFFF;
constexpr uint32_t kBlack = 0xFF000000;

/// The black pixels of a word of row y.
uint64_t BlackBits(int y, int phase)
{
    static_assert(COutlineBits::kPeriod == 8 && kBitsPerWord % COutlineBits::kPeriod == 0);
    constexpr uint8_t kHalf = 0x0F;
    constexpr uint64_t kEveryByte = 0x0101010101010101;
    // Unsigned, so that the pattern runs on through negative coordinates.
    const unsigned along = static_cast<unsigned>(y) - static_cast<unsigned>(phase);
    return kEveryByte * std::rotr(kHalf, static_cast<int>(along % COutlineBits::kPeriod));
}

} // namespace

COutlineBits::COutlineBits(const Rect& area)
    : m_area(area), m_wordsPerRow(static_cast<size_t>(WordsFor(area.Width()))),
      m_words(m_wordsPerRow * static_cast<size_t>(area.Height()))
{
    assert(area.left == 0);
}

void COutlineBits::AddRow(int64_t y, int64_t from, int64_t to)
{
    if (y < m_area.top || y >= m_area.bottom)
        return;
    const int left = static_cast<int>(std::clamp<int64_t>(from, 0, m_area.right));
    const int right = static_cast<int>(std::clamp<int64_t>(to, 0, m_area.right));
    if (left < right)
        SetBits(Row(static_cast<int>(y)), left, right);
}

void COutlineBits::AddColumn(int64_t x, int64_t from, int64_t to)
{
    if (x < 0 || x >= m_area.right)
        return;
    const auto word = static_cast<size_t>(x / kBitsPerWord);
    const uint64_t bit = uint64_t{1} << (x % kBitsPerWord);
    const auto bottom = std::min<int64_t>(to, m_area.bottom);
    for (int64_t y = std::max<int64_t>(from, m_area.top); y < bottom; ++y)
        Row(static_cast<int>(y))[word] |= bit;
}

void COutlineBits::Paint(const BitmapView& target, const Rect& area, int phase) const
{
    const Rect shown = area.Intersected(m_area);
    if (shown.IsEmpty())
        return;
    for (int y = shown.top; y < shown.bottom; ++y) {
        const uint64_t* const row = m_words.data() + static_cast<size_t>(y - m_area.top) * m_wordsPerRow;
        uint8_t* const pixels = target.Row(y - area.top);
        const uint64_t black = BlackBits(y, phase);
        VisitWords(shown.left, shown.right, [&](size_t word, uint64_t mask) {
            const ptrdiff_t first = static_cast<ptrdiff_t>(word) * kBitsPerWord - area.left;
            for (uint64_t bits = row[word] & mask; bits != 0; bits &= bits - 1) {
                const int bit = std::countr_zero(bits);
                const uint32_t pixel = (black >> bit & 1) != 0 ? kBlack : kWhite;
                std::memcpy(pixels + (first + bit) * 4, &pixel, sizeof pixel);
            }
        });
    }
}

void COutlineBits::VisitCovered(const std::function<void(const Rect&)>& visit) const
{
    std::vector<uint64_t> anyRow(m_wordsPerRow);
    for (size_t at = 0; at < m_words.size(); ++at)
        anyRow[at % m_wordsPerRow] |= m_words[at];
    for (size_t word = 0; word < m_wordsPerRow; ++word) {
        const size_t first = word;
        while (word < m_wordsPerRow && anyRow[word] != 0)
            ++word;
        if (word > first) {
            visit({static_cast<int>(first) * kBitsPerWord, m_area.top,
                   std::min(static_cast<int>(word) * kBitsPerWord, m_area.right), m_area.bottom});
        }
    }
}
