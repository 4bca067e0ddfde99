// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FloodFillTool.h"

#include "canvas/FloodFill.h"
#include "canvas/JoinPictures.h"
#include "canvas/PaintSettings.h"
#include "canvas/PaintTarget.h"
#include "canvas/PixoluneView.h"
#include "canvas/ReplacePicture.h"
#include "canvas/ShownPixel.h"
#include "document/Refusal.h"
#include "history/PaintCommand.h"

#include <cstring>
#include <memory>

namespace {

/// The part of an object's picture that lies on the canvas, on a transparent picture of the canvas's size.
CPackedDib SpreadOnCanvas(const CPicObject& object, const CObjectCanvas& canvas)
{
    CPackedDib spread = CPackedDib::CreateTransparent(canvas.width, canvas.height);
    const Rect part = object.Rectangle().Intersected(canvas.Rectangle());
    if (spread.IsEmpty() || part.IsEmpty())
        return spread;
    const CPackedDib& picture = object.image->Dib();
    for (int y = part.top; y < part.bottom; ++y) {
        std::memcpy(spread.Row(y) + ptrdiff_t{part.left} * 4,
                    picture.Row(y - object.y) + ptrdiff_t{part.left - object.x} * 4,
                    static_cast<size_t>(part.Width()) * 4);
    }
    return spread;
}

} // namespace

void CFloodFillTool::Down(const MouseInput& input)
{
    CPixoluneDoc& document = View().Document();
    const CSettings& settings = document.Services().settings;
    const Point point = View().Geometry().ToDocument(input.client);
    if (!document.Canvas().Rectangle().Contains(point))
        return;
    if (document.Canvas().objects.IsEmpty()) {
        Refuse(document, Str::FloodNoObject);
        return;
    }
    if (!View().Selection().IsEmpty() && !View().Selection().Contains(point)) {
        Refuse(document, Str::ClickOutsideSelection);
        return;
    }
    const Ref<CPicObject> object = FindPaintTarget(document.Canvas(), point);
    if (!object) {
        Refuse(document, Str::FloodNoneSelected);
        return;
    }
    SelectPaintTarget(document, *object);
    const Point own = ToObject(*object, point);
    const bool isTransparent = object->image->PixelAt(own.x, own.y) >> 24 == 0;
    if (isTransparent && !settings.IsOn(Setting::FloodTransparence)) {
        Refuse(document, Str::FloodTransparentArea);
        return;
    }
    const Paint paint = PaintOf(settings, input.button, Setting::FloodOpacity);
    if (!(isTransparent ? FillTransparency(object, point, paint) : FillColour(object, own, paint)))
        Refuse(document, Str::OutOfMemory);
}

bool CFloodFillTool::FillColour(const Ref<CPicObject>& object, Point point, const Paint& paint)
{
    CPixoluneDoc& document = View().Document();
    const CSettings& settings = document.Services().settings;
    CRegion clip = View().Selection();
    object->image->SetPainter(nullptr);
    // A copy is painted, so that who still reads the picture need not make another.
    CPackedDib filled = object->image->Dib().Duplicate();
    const Point toObject = ToObject(*object, {0, 0});
    if (filled.IsEmpty() || !clip.Translate(toObject.x, toObject.y))
        return false;
    const FillSeed seed{object->image->PixelAt(point.x, point.y), settings.Get(Setting::FloodSimilarity)};
    if (!settings.IsOn(Setting::FloodAdjacentArea))
        FillEverywhere(filled, seed, paint, clip);
    else if (!FillConnected(filled, seed, paint, point, clip))
        return false;
    document.Record(std::make_unique<CPaintCommand>(PaintKind::Flood, object->image,
                                                    object->image->Exchange(std::move(filled))));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(object->Rectangle());
    return true;
}

bool CFloodFillTool::FillTransparency(const Ref<CPicObject>& object, Point point, const Paint& paint)
{
    CPixoluneDoc& document = View().Document();
    PlacedPicture canvas{SpreadOnCanvas(*object, document.Canvas()), {0, 0}};
    if (canvas.dib.IsEmpty())
        return false;
    const CRegion& clip = View().Selection();
    if (!document.Services().settings.IsOn(Setting::FloodAdjacentArea))
        FillTransparentEverywhere(canvas.dib, paint, clip);
    else if (!FillConnectedTransparent(canvas.dib, paint, point, clip))
        return false;
    const std::optional<PlacedPicture> filled = Trimmed(canvas);
    if (!filled)
        return false;
    if (filled->dib.IsEmpty())
        return true;
    canvas.dib = {}; // its memory is wanted for the next picture
    const Point position{object->x, object->y};
    PlacedPicture joined = JoinPictures(object->image->Dib(), position, *filled, JoinRule::Replace);
    if (joined.dib.IsEmpty())
        return false;
    if (joined.position != position) {
        ReplaceObjectPicture(document, object, std::move(joined), PixelEditKind::Flood);
        return true;
    }
    const Rect before = object->Rectangle();
    document.Record(std::make_unique<CPaintCommand>(PaintKind::Flood, object->image,
                                                    object->image->Exchange(std::move(joined.dib))));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(before.United(object->Rectangle()));
    return true;
}
