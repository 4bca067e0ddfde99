// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/Compositing.h"

#include "model/BlendPixels.h"
#include "model/LayerStack.h"
#include "model/Placement.h"

#include <vector>

PixelPath ProbePixelPath()
{
    static const PixelPath path = HasVectorInstructions() ? PixelPath::Weighted : PixelPath::Integer;
    return path;
}

namespace {

void DrawOne(const BitmapView& destination, Point origin, const CPackedDib& source, Point position,
             uint8_t transparency, int zoom, RowBlend blend)
{
    const PictureLayer layer{ViewOf(source),
                             Place(source.Size(), position, zoom, destination.Extent(), origin), transparency,
                             blend};
    DrawLayers(destination, {&layer, 1});
}

} // namespace

void CompositeWeighted(const BitmapView& destination, Point destinationOrigin, const CPackedDib& source,
                       Point sourcePosition, uint8_t transparency, int zoom)
{
    DrawOne(destination, destinationOrigin, source, sourcePosition, transparency, zoom, BlendRowWeighted);
}

void CompositeInteger(const BitmapView& destination, Point destinationOrigin, CPackedDib& source,
                      Point sourcePosition, uint8_t transparency, int zoom)
{
    const Placement placement =
        Place(source.Size(), sourcePosition, zoom, destination.Extent(), destinationOrigin);
    const BitmapView pixels = ViewOf(source);
    for (int y = placement.area.top; y < placement.area.bottom; ++y) {
        uint8_t* row = destination.Row(y);
        uint8_t* sourceRow = pixels.Row(placement.SourceY(y));
        for (int x = placement.area.left; x < placement.area.right; ++x) {
            uint8_t* pixel = sourceRow + ptrdiff_t{placement.SourceX(x)} * 4;
            BlendPixelInteger(row + ptrdiff_t{x} * 4, pixel, pixel[3] - transparency);
        }
    }
}

void CompositeOver(const BitmapView& destination, Point destinationOrigin, const CPackedDib& source,
                   Point sourcePosition, uint8_t transparency)
{
    DrawOne(destination, destinationOrigin, source, sourcePosition, transparency, 1, BlendRowOver);
}

namespace {

/// The pictures to draw, bottom to top; `add` takes each with its position, its transparency and the record
/// that holds it, none for a floating image.
template <typename Add> void VisitPictures(const CObjectList& objects, const FloatingImage& floating, Add add)
{
    bool floatingDue = floating.dib != nullptr && !floating.dib->IsEmpty();
    const auto addFloating = [&] { add(*floating.dib, floating.position, floating.transparency, nullptr); };
    for (const Ref<CPicObject>& object : objects) {
        if (object->visible && object->image && !object->image->Dib().IsEmpty()) {
            const Point position{object->x, object->y};
            add(object->image->Dib(), position, object->transparency, object->image.Get());
        }
        if (floatingDue && object.Get() == floating.above) {
            addFloating();
            floatingDue = false;
        }
    }
    if (floatingDue)
        addFloating();
}

} // namespace

std::vector<DisplayLayer> DisplayLayers(const CObjectCanvas& canvas, const FloatingImage& floating)
{
    std::vector<DisplayLayer> layers;
    layers.reserve(canvas.objects.Count() + 1);
    VisitPictures(
        canvas.objects, floating,
        [&](const CPackedDib& dib, Point position, uint8_t transparency, const CRasterImage* image) {
            DisplayLayer layer{&dib, position, transparency};
            if (image != nullptr) {
                layer.contentId = image->ContentId();
                layer.alphas = &image->Alphas();
                layer.isSelected = image->selected;
            }
            layers.push_back(layer);
        });
    return layers;
}

void CompositeLayers(const BitmapView& destination, Point destinationOrigin,
                     std::span<const DisplayLayer> layers, int zoom)
{
    std::vector<PictureLayer> placed;
    placed.reserve(layers.size());
    for (const DisplayLayer& layer : layers) {
        placed.push_back(
            {ViewOf(*layer.dib),
             Place(layer.dib->Size(), layer.position, zoom, destination.Extent(), destinationOrigin),
             layer.transparency, BlendRowWeighted, layer.alphas});
    }
    DrawLayers(destination, placed);
}

void CompositeForDisplay(const BitmapView& destination, Point destinationOrigin, const CObjectCanvas& canvas,
                         int zoom, const FloatingImage& floating, PixelPath path)
{
    if (path == PixelPath::Weighted) {
        CompositeLayers(destination, destinationOrigin, DisplayLayers(canvas, floating), zoom);
        return;
    }
    VisitPictures(canvas.objects, floating,
                  [&](const CPackedDib& /*dib*/, Point position, uint8_t transparency, CRasterImage* image) {
                      if (image != nullptr)
                          image->AnnounceChange({0, 0, image->Width(), image->Height()});
                      CPackedDib& dib = image != nullptr ? image->AnnouncedDib() : *floating.dib;
                      CompositeInteger(destination, destinationOrigin, dib, position, transparency, zoom);
                  });
}
