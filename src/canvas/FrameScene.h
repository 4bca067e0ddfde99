// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/Compositing.h"

#include <vector>

/// What a window shows of a document. Rectangles are those of the zoomed frame, whose corner is (0, 0).
struct FrameScene {
    const CObjectCanvas* canvas = nullptr;
    FloatingImage floating;
    std::vector<DisplayLayer> layers; ///< of both, bottom to top
    Size image;                       ///< of the zoomed frame
    Rect window;                      ///< what the window shows; may reach beyond the frame
    int zoom = 1;
    bool isHeld = false;        ///< a button holds the selected objects: they are likely to move
    std::vector<Rect> active{}; ///< the rectangles of the active objects, in the document

    /// The part of the frame that the window shows.
    [[nodiscard]] Rect Visible() const { return Rect::At({0, 0}, image).Intersected(window); }
};
