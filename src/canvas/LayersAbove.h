// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/WindowBuffer.h"
#include "model/Compositing.h"

#include <span>

/// What some layers make of anything that moves below them, roughly, without drawing them again: kept as what
/// they make of black and of white (BlendBetween). Two pictures of the window's size.
class CLayersAbove {
public:
    /// Asks for memory if there is none yet.
    [[nodiscard]] bool Allocate(Size window)
    {
        return m_onBlack.Allocate(window) && m_onWhite.Allocate(window);
    }
    /// Where the layers have been drawn.
    [[nodiscard]] const CRegion& Made() const { return m_onWhite.valid; }
    /// Draws the layers in a rectangle of the window where that has not been done. window: in the zoomed
    /// frame.
    void Make(const Rect& rect, std::span<const DisplayLayer> layers, const Rect& window, int zoom);
    /// Puts them over a picture that stands at a rectangle of the window, for which they have been made.
    void BlendOnto(const BitmapView& target, const Rect& rect);
    void Shift(int dx, int dy);
    void Clear();

private:
    WindowBuffer m_onBlack;
    WindowBuffer m_onWhite;
};
