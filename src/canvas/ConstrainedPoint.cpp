// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ConstrainedPoint.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace {

int Rounded(double value)
{
    return static_cast<int>(std::lround(std::clamp<double>(value, INT32_MIN, INT32_MAX)));
}

} // namespace

Point SnapDirection(Point anchor, Point point)
{
    const double dx = static_cast<double>(point.x) - anchor.x;
    const double dy = static_cast<double>(point.y) - anchor.y;
    constexpr double kStep = std::numbers::pi / 12;
    const double angle = std::round(std::atan2(dy, dx) / kStep) * kStep;
    const double length = dx * std::cos(angle) + dy * std::sin(angle);
    // The shorter way follows from the longer one once that is whole: so diagonals stay exact.
    if (std::abs(std::sin(angle)) > std::abs(std::cos(angle))) {
        const int down = Rounded(length * std::sin(angle));
        return {AddClamped(anchor.x, Rounded(down / std::tan(angle))), AddClamped(anchor.y, down)};
    }
    const int along = Rounded(length * std::cos(angle));
    return {AddClamped(anchor.x, along), AddClamped(anchor.y, Rounded(along * std::tan(angle)))};
}

Point SnapSquare(Point anchor, Point point)
{
    const int64_t dx = int64_t{point.x} - anchor.x;
    const int64_t dy = int64_t{point.y} - anchor.y;
    const int side = static_cast<int>(std::min<int64_t>(std::max(std::abs(dx), std::abs(dy)), INT32_MAX));
    return {AddClamped(anchor.x, dx < 0 ? -side : side), AddClamped(anchor.y, dy < 0 ? -side : side)};
}
