// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ReplacePicture.h"

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
