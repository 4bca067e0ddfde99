// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

/// The visible objects of a canvas one after another, bottom first and round again.
class CAnimationPlayback {
public:
    /// canvas: has at least one visible object.
    explicit CAnimationPlayback(const CObjectCanvas& canvas);

    /// The canvas with nothing but the current object on it.
    [[nodiscard]] const CObjectCanvas& Shown() const { return m_shown; }
    void Step();

private:
    void ShowCurrent();

    CObjectList m_frames;
    size_t m_current = 0;
    CObjectCanvas m_shown;
};
