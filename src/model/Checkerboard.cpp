// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"

#include <array>

namespace {

constexpr int kSquare = 8;

/// Whether a coordinate lies in an odd square; squares on both sides of 0 belong together, since the
/// division goes toward zero.
bool IsOddSquare(int coordinate, int offset)
{
    return ((int64_t{coordinate} + offset) / kSquare) % 2 != 0;
}

} // namespace

void DrawCheckerboard(const BitmapView& view, Rgb a, Rgb b, Point offset)
{
    const std::array colours{a, b};
    for (int y = 0; y < view.height; ++y) {
        uint8_t* pixel = view.Row(y);
        const bool oddRow = IsOddSquare(y, offset.y);
        for (int x = 0; x < view.width; ++x, pixel += 4) {
            const Rgb colour = colours[IsOddSquare(x, offset.x) != oddRow ? 1 : 0];
            pixel[0] = colour.blue;
            pixel[1] = colour.green;
            pixel[2] = colour.red;
        }
    }
}
