// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/PictureCommand.h"

#include <numeric>

size_t CPictureCommand::HeldBytes() const
{
    return std::accumulate(
        m_pictures.begin(), m_pictures.end(), size_t{0},
        [](size_t sum, const CSavedPicture& picture) { return sum + picture.HeldBytes(); });
}

Rect CPictureCommand::Covered() const
{
    const CObjectCanvas& canvas = Document()->Canvas();
    // Looking up every record of a long list would cost more than painting the frame again.
    return m_pictures.size() == 1 ? RectangleShowing(canvas, m_pictures.front().Image().Get())
                                  : canvas.Rectangle();
}

void CPictureCommand::Exchange()
{
    const Rect before = Covered();
    std::optional<CChangedTiles> touched;
    for (CSavedPicture& picture : m_pictures)
        touched = picture.Exchange();
    for (Position& position : m_positions) {
        std::swap(position.object->x, position.saved.x);
        std::swap(position.object->y, position.saved.y);
    }
    Document()->NotifyObjectsChanged();
    const Rect after = Covered();
    if (m_pictures.size() != 1 || !touched || after != before || after.IsEmpty()) {
        Document()->NotifyFrameChanged(before.United(after));
        return;
    }
    for (const Rect& rect : touched->Rectangles())
        Document()->NotifyFrameChanged(rect.Moved(after.left, after.top));
}

void CPictureCommand::VisitParts(ICommandParts& parts) const
{
    for (const CSavedPicture& picture : m_pictures)
        parts.Picture(picture.Image(), picture.Version());
    for (const Position& position : m_positions) {
        parts.Attribute(position.object, ObjectAttribute::X, position.saved.x);
        parts.Attribute(position.object, ObjectAttribute::Y, position.saved.y);
    }
}
