// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifPlayback.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kToBackground = 2;
constexpr int kToPrevious = 3;

void ClearRect(CPackedDib& dib, const Rect& rect)
{
    for (int y = rect.top; y < rect.bottom; ++y)
        std::fill_n(dib.Row(y) + ptrdiff_t{rect.left} * 4, ptrdiff_t{rect.Width()} * 4, uint8_t{0});
}

void DrawOpaquePixels(CPackedDib& screen, const GifFrame& frame, const Rect& shown)
{
    for (int y = shown.top; y < shown.bottom; ++y) {
        const uint8_t* from =
            frame.dib.Row(y - frame.position.y) + ptrdiff_t{shown.left - frame.position.x} * 4;
        uint8_t* to = screen.Row(y) + ptrdiff_t{shown.left} * 4;
        for (int x = shown.left; x < shown.right; ++x, from += 4, to += 4) {
            if (from[3] != 0)
                std::memcpy(to, from, 4);
        }
    }
}

} // namespace

bool CGifPlayback::Advance(const GifFrame& frame)
{
    if (m_screen.IsEmpty())
        return false;
    if (m_lastDisposal == kToBackground)
        ClearRect(m_screen, m_lastImage);
    else if (m_lastDisposal == kToPrevious)
        m_screen = std::move(m_earlier);
    m_lastDisposal = frame.graphicControlByte >> 2 & 7;
    if (m_lastDisposal == kToPrevious) {
        m_earlier = m_screen.Duplicate();
        if (m_earlier.IsEmpty())
            return false;
    }
    m_lastImage = Rect::At(frame.position, frame.dib.Size()).Intersected(Rect::At({0, 0}, m_screen.Size()));
    DrawOpaquePixels(m_screen, frame, m_lastImage);
    return true;
}
