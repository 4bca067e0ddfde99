// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "canvas/PixelMatch.h"
#include "platform/memory/HeapBlock.h"

#include <cstdint>
#include <span>

/// Some pixels of a picture, one bit each.
class CPixelSet {
public:
    /// No pixel yet, or undefined ones for who sets every word. IsEmpty() when memory runs out.
    [[nodiscard]] static CPixelSet Create(::Size size, BlockContent content = BlockContent::Zeroes);

    [[nodiscard]] bool IsEmpty() const { return m_block.IsEmpty(); }
    [[nodiscard]] ::Size Size() const { return m_size; }
    [[nodiscard]] std::span<uint64_t> Row(int y) { return {Words() + Offset(y), m_wordsPerRow}; }
    [[nodiscard]] std::span<const uint64_t> Row(int y) const
    {
        return {reinterpret_cast<const uint64_t*>(m_block.Data()) + Offset(y), m_wordsPerRow};
    }

    /// Rows outside [Top(), Bottom()) hold no pixel.
    [[nodiscard]] int Top() const { return m_top; }
    [[nodiscard]] int Bottom() const { return m_bottom; }
    void SetRows(int top, int bottom)
    {
        m_top = top;
        m_bottom = bottom;
    }

private:
    [[nodiscard]] uint64_t* Words() { return reinterpret_cast<uint64_t*>(m_block.Data()); }
    [[nodiscard]] size_t Offset(int y) const { return static_cast<size_t>(y) * m_wordsPerRow; }

    ::Size m_size;
    size_t m_wordsPerRow = 0;
    int m_top = 0;
    int m_bottom = 0;
    CHeapBlock m_block;
};

/// The pixels that can be reached from `seed`, itself included whether it matches or not, by steps to the
/// pixel above, below, left or right that match and lie in the region (empty: everywhere).
/// seed: inside the picture. Empty when memory runs out.
///
/// Whole words of 64 pixels are filled at once, in blocks of 64 rows that are visited again as long as their
/// neighbours hand them new pixels. Pixels are matched when the area first reaches them. Cost: the area, and
/// less than one step for every run of pixels.
[[nodiscard]] CPixelSet FindConnected(const CPackedDib& dib, const PixelRange& range, Point seed,
                                      const CRegion& clip);

/// Paints the same pixels, each as soon as it is found: it has been matched by then and is still at hand.
/// False when memory runs out; nothing is painted then.
[[nodiscard]] bool PaintConnected(CPackedDib& dib, const PixelRange& range, Point seed, const CRegion& clip,
                                  const CFillBrush& brush);
