// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PaintTarget.h"

#include <ranges>

namespace {

template <typename Predicate> Ref<CPicObject> Topmost(const CObjectCanvas& canvas, Predicate predicate)
{
    for (const Ref<CPicObject>& object : canvas.objects | std::views::reverse) {
        const bool isPaintable =
            object->visible && !object->locked && object->image && !object->image->Dib().IsEmpty();
        if (isPaintable && predicate(*object))
            return object;
    }
    return nullptr;
}

} // namespace

Ref<CPicObject> FindPaintTarget(const CObjectCanvas& canvas, Point point)
{
    if (Ref<CPicObject> under = Topmost(canvas, [&](const CPicObject& object) {
            return object.IsSelected() && object.Rectangle().Contains(point);
        }))
        return under;
    if (Ref<CPicObject> hit = Topmost(canvas, [&](const CPicObject& object) { return object.IsHit(point); }))
        return hit;
    return Topmost(canvas, [](const CPicObject& object) { return object.IsSelected(); });
}

void SelectPaintTarget(CPixoluneDoc& document, CPicObject& target)
{
    if (target.IsSelected())
        return;
    target.SetSelected(true);
    document.NotifyObjectSelectionChanged();
}
