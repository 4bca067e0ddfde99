// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/LayerStack.h"

#include <cstring>
#include <vector>

namespace {

void DrawLayer(const BitmapView& destination, const PictureLayer& layer, RowBlend blend)
{
    const Placement& placement = layer.placement;
    const auto width = static_cast<size_t>(placement.area.Width());
    std::vector<uint8_t> gathered(width * 4);
    for (int y = placement.area.top; y < placement.area.bottom; ++y) {
        const uint8_t* source = layer.pixels.Row(placement.SourceY(y));
        for (size_t i = 0; i < width; ++i) {
            const int x = placement.SourceX(placement.area.left + static_cast<int>(i));
            std::memcpy(gathered.data() + i * 4, source + ptrdiff_t{x} * 4, 4);
        }
        blend(destination.Row(y) + ptrdiff_t{placement.area.left} * 4, gathered.data(), width,
              layer.transparency);
    }
}

} // namespace

void DrawLayers(const BitmapView& destination, std::span<const PictureLayer> layers, RowBlend blend)
{
    for (const PictureLayer& layer : layers) {
        if (!layer.placement.area.IsEmpty())
            DrawLayer(destination, layer, blend);
    }
}
