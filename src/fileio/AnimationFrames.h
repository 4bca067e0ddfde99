// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

/// The canvas as an animation: every visible object, bottom first, is a frame of the canvas's size with
/// nothing else on it. The canvas must stay as it is meanwhile.
class CAnimationFrames {
public:
    explicit CAnimationFrames(const CObjectCanvas& canvas);

    [[nodiscard]] size_t Count() const { return m_objects.Count(); }
    [[nodiscard]] ::Size Size() const { return {m_frame.Width(), m_frame.Height()}; }
    /// 32 bits per pixel; empty when memory runs out.
    [[nodiscard]] CPackedDib Frame(size_t index) const;

private:
    CObjectList m_objects;
    Rect m_frame;
};
