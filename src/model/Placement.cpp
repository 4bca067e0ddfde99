// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/Placement.h"

#include <algorithm>

namespace {

/// One axis: the covered range and the distance from the picture's edge to the destination's.
struct Span {
    int begin;
    int end;
    int64_t offset;
};

Span PlaceAxis(int size, int position, const Placement& scale, int destination, int origin)
{
    // Dividing both edges toward zero never leaves more pixels than the picture has samples.
    const int64_t first = int64_t{position} * scale.enlargement / scale.step;
    const int64_t last = (int64_t{position} + size) * scale.enlargement / scale.step;
    const auto clip = [&](int64_t edge) {
        return static_cast<int>(std::clamp<int64_t>(edge - origin, 0, destination));
    };
    return {clip(first), clip(last), origin - first};
}

} // namespace

Placement Place(Size picture, Point position, int zoom, Size destination, Point origin)
{
    Placement placement;
    placement.enlargement = zoom > 1 ? zoom : 1;
    placement.step = zoom < -1 ? -zoom : 1;
    const Span x = PlaceAxis(picture.width, position.x, placement, destination.width, origin.x);
    const Span y = PlaceAxis(picture.height, position.y, placement, destination.height, origin.y);
    placement.area = {x.begin, y.begin, x.end, y.end};
    placement.offsetX = x.offset;
    placement.offsetY = y.offset;
    return placement;
}
