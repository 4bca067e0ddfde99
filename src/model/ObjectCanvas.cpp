// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ObjectCanvas.h"

#include <algorithm>
#include <ranges>

namespace {

template <typename Predicate> CObjectList Filtered(const CObjectList& objects, Predicate predicate)
{
    CObjectList result;
    for (const Ref<CPicObject>& object : objects) {
        if (predicate(*object))
            result.Append(object);
    }
    return result;
}

template <typename Range, typename Predicate> Ref<CPicObject> FirstOf(Range&& objects, Predicate predicate)
{
    for (const Ref<CPicObject>& object : objects) {
        if (predicate(*object))
            return object;
    }
    return nullptr;
}

} // namespace

void CObjectCanvas::DeselectAll()
{
    for (const Ref<CPicObject>& object : objects)
        object->SetSelected(false);
}

int CObjectCanvas::CountSelected() const
{
    return static_cast<int>(
        std::ranges::count_if(objects, [](const auto& object) { return object->IsActive(); }));
}

int CObjectCanvas::CountVisible() const
{
    return static_cast<int>(
        std::ranges::count_if(objects, [](const auto& object) { return object->visible; }));
}

bool CObjectCanvas::IsAnySelectedLocked() const
{
    return std::ranges::any_of(objects,
                               [](const auto& object) { return object->IsActive() && object->locked; });
}

CObjectList CObjectCanvas::FlaggedObjects() const
{
    return Filtered(objects, [](const CPicObject& object) { return object.IsSelected(); });
}

CObjectList CObjectCanvas::ActiveObjects() const
{
    return Filtered(objects, [](const CPicObject& object) { return object.IsActive(); });
}

Ref<CPicObject> CObjectCanvas::TopHit(Point point) const
{
    return FirstOf(objects, [&](const CPicObject& object) { return object.visible && object.IsHit(point); });
}

Ref<CPicObject> CObjectCanvas::HitForSelection(Point point) const
{
    if (Ref<CPicObject> hit = FirstOf(
            objects, [&](const CPicObject& object) { return object.IsActive() && object.IsHit(point); }))
        return hit;
    return FirstOf(objects, [](const CPicObject& object) { return object.visible; });
}

Ref<CPicObject> CObjectCanvas::TopmostHit(Point point) const
{
    return FirstOf(objects | std::views::reverse,
                   [&](const CPicObject& object) { return object.visible && object.IsHit(point); });
}

Ref<CPicObject> CObjectCanvas::ClickTarget(Point point) const
{
    if (Ref<CPicObject> hit = FirstOf(objects | std::views::reverse, [&](const CPicObject& object) {
            return object.IsActive() && object.IsHit(point);
        }))
        return hit;
    return TopmostHit(point);
}

void CObjectCanvas::MoveSelected(int dx, int dy)
{
    for (const Ref<CPicObject>& object : objects) {
        if (!object->IsActive())
            continue;
        object->x = AddClamped(object->x, dx);
        object->y = AddClamped(object->y, dy);
    }
}

bool CObjectCanvas::FindAlphas(std::chrono::steady_clock::time_point until)
{
    return std::ranges::any_of(
        objects, [until](const auto& object) { return object->image && object->image->FindAlphas(until); });
}
