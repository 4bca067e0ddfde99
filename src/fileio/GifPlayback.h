// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/GifReader.h"

/// What the screen shows of a GIF animation while its images follow each other.
/// Source of the rules: GIF89a, section 23 (disposal methods 0 to 3).
class CGifPlayback {
public:
    explicit CGifPlayback(Size screen) : m_screen(CPackedDib::CreateTransparent(screen.width, screen.height))
    {
    }

    /// Disposes of the image before and draws the next one. False when memory ran out.
    [[nodiscard]] bool Advance(const GifFrame& frame);
    /// 32 bits per pixel; empty when memory ran out.
    [[nodiscard]] const CPackedDib& Screen() const { return m_screen; }

private:
    CPackedDib m_screen;
    CPackedDib m_earlier; ///< the screen in front of an image that is to go without a trace
    Rect m_lastImage;
    int m_lastDisposal = 0;
};
