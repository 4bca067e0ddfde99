// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// A part of the frame at some zoom: its pixels, and where they stand in the zoomed frame.
template <typename View> struct FramePart {
    View pixels;
    Point corner;
    int zoom = 1;
};

/// Draws what a part shows at another zoom, each pixel the nearest one. Returns the rectangle of the target
/// that it covers; nothing else is touched. Corners must not be negative.
Rect StretchFrame(const FramePart<BitmapView>& target, const FramePart<ConstBitmapView>& source);
