// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ReplacePicture.h"

#include "canvas/InPlaceStroke.h"

#include <memory>

void ReplaceObjectPicture(CPixoluneDoc& document, const Ref<CPicObject>& object, PlacedPicture picture,
                          PixelEditKind kind)
{
    const Rect touched = object->Rectangle().United(picture.Rectangle());
    auto command = std::make_unique<CPixelEditCommand>(kind);
    command->AddPosition(object, {object->x, object->y});
    command->AddPicture(object->image, object->image->Exchange(std::move(picture.dib)));
    object->x = picture.position.x;
    object->y = picture.position.y;
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(touched);
}

bool JoinOntoObject(CPixoluneDoc& document, const Ref<CPicObject>& object, const PlacedPicture& upper,
                    JoinRule rule, PixelEditKind kind)
{
    const Rect touched = upper.Rectangle();
    if (object->image->Dib().IsEmpty())
        return false;
    if (object->Rectangle().United(touched) != object->Rectangle()) {
        PlacedPicture joined = JoinPictures(object->image->Dib(), {object->x, object->y}, upper, rule);
        if (joined.dib.IsEmpty())
            return false;
        ReplaceObjectPicture(document, object, std::move(joined), kind);
        return true;
    }
    CInPlaceStroke stroke(object->image);
    if (!stroke.Prepare(touched.Moved(-object->x, -object->y)))
        return false;
    JoinInto(stroke.Pixels(), {object->x, object->y}, upper, rule);
    std::optional<CPixelChanges> changes = stroke.Changes();
    if (!changes) {
        stroke.Restore();
        return false;
    }
    auto command = std::make_unique<CPixelEditCommand>(kind);
    command->AddPosition(object, {object->x, object->y});
    command->AddPicture(object->image, std::move(*changes));
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(touched);
    return true;
}
