// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

/// Copies pixels between views of one size, on several processors where that pays.
void CopyPixels(const BitmapView& to, const ConstBitmapView& from);

/// Pixels of a window, from its top-left corner: which of them are right, and which show anything at all.
struct WindowBuffer {
    CPackedDib pixels;
    CRegion valid;
    CRegion shown; ///< the valid ones and more

    /// Asks for memory if there is none yet.
    [[nodiscard]] bool Allocate(Size window);
    [[nodiscard]] BitmapView Part(const Rect& rect) { return ViewOf(pixels).Part(rect); }
    void Add(const Rect& rect);
    void Remove(const Rect& rect);
    void Clear() { valid = shown = {}; }
    /// The part of a rectangle that is not valid.
    [[nodiscard]] CRegion Missing(const Rect& rect) const;
    /// The window moved over the frame by so much.
    void Shift(int dx, int dy);
};
