// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/JoinPictures.h"

#include <algorithm>
#include <cstring>
#include <utility>

/// A picture that covers no more of a canvas than a stroke has reached so far.
class CGrowingPicture {
public:
    /// limits: the canvas, beyond which nothing is ever asked for.
    explicit CGrowingPicture(const Rect& limits) : m_limits(limits) {}

    /// Makes room for a rectangle inside the limits. fill(view, rect) writes the pixels of rect that are new;
    /// it gets all of the larger picture before what was there is copied back. Grows by more than is needed,
    /// so that a long stroke is not copied at every step. False when memory runs out; nothing is lost then.
    template <typename Fill> [[nodiscard]] bool Include(const Rect& rect, Fill fill)
    {
        const Rect old = m_picture.Rectangle();
        const Rect needed = old.United(rect);
        if (needed == old)
            return true;
        constexpr int kLeastGrowth = 32;
        const int growth = std::max(needed.Width(), needed.Height()) / 4 + kLeastGrowth;
        const Rect room = needed.Inflated(growth).Intersected(m_limits);
        CPackedDib dib = CPackedDib::CreateTransparent(room.Width(), room.Height());
        if (dib.IsEmpty())
            return false;
        const BitmapView view = ViewOf(dib);
        fill(view, room);
        for (int y = 0; y < old.Height(); ++y) {
            std::memcpy(view.Row(y + old.top - room.top) + ptrdiff_t{old.left - room.left} * 4,
                        m_picture.dib.Row(y), static_cast<size_t>(old.Width()) * 4);
        }
        m_picture = {std::move(dib), room.Corner()};
        return true;
    }

    [[nodiscard]] const Rect& Limits() const { return m_limits; }
    [[nodiscard]] bool IsEmpty() const { return m_picture.dib.IsEmpty(); }
    [[nodiscard]] PlacedPicture& Picture() { return m_picture; }
    [[nodiscard]] const PlacedPicture& Picture() const { return m_picture; }

private:
    Rect m_limits;
    PlacedPicture m_picture;
};
