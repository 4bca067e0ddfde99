// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/Compositing.h"
#include "model/LayerStack.h"

#include <vector>

CPackedDib FlattenObjects(const CObjectList& objects, const Rect& rect)
{
    CPackedDib frame = CPackedDib::CreateTransparent(rect.Width(), rect.Height());
    if (frame.IsEmpty() || rect.IsEmpty())
        return frame;
    const BitmapView view = ViewOf(frame);
    std::vector<PictureLayer> layers;
    for (const Ref<CPicObject>& object : objects) {
        if (!object->visible)
            continue;
        PictureLayer layer;
        layer.transparency = object->transparency;
        layer.blend = layers.empty() ? CopyRowLessTransparency : BlendRowOver;
        if (object->image && !object->image->Dib().IsEmpty()) {
            const CPackedDib& dib = object->image->Dib();
            layer.pixels = ViewOf(dib);
            layer.alphas = &object->image->Alphas();
            layer.placement = Place(dib.Size(), {object->x, object->y}, 1, view.Extent(), rect.Corner());
        }
        layers.push_back(layer);
    }
    DrawLayers(view, layers);
    return frame;
}

CPackedDib Flatten(const CObjectCanvas& canvas)
{
    return FlattenObjects(canvas.objects, canvas.Rectangle());
}
