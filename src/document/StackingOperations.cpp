// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/StackingOperations.h"

#include "document/Refusal.h"

#include <algorithm>
#include <ranges>
#include <unordered_set>
#include <vector>

namespace {

using Objects = std::vector<Ref<CPicObject>>;

bool IsFlagged(const Ref<CPicObject>& object)
{
    return object->IsSelected();
}

/// Moves every flagged object `places` towards the end of the range; none stands within that distance of it.
/// Moving them one place a pass, the one nearest the end first, gives the same order.
template <typename Range> Objects Shifted(Range&& objects, size_t places)
{
    Objects result(std::ranges::size(objects));
    size_t at = 0;
    for (const Ref<CPicObject>& object : objects) {
        if (IsFlagged(object))
            result[at + places] = object;
        ++at;
    }
    auto free = result.begin();
    for (const Ref<CPicObject>& object : objects) {
        if (IsFlagged(object))
            continue;
        free = std::find(free, result.end(), Ref<CPicObject>());
        *free = object;
    }
    return result;
}

/// The order from the far end to the end that the objects move to, after the move.
template <typename Range> Objects Moved(Range&& objects, bool onePlace)
{
    const auto reversed = objects | std::views::reverse;
    const auto nearest = std::ranges::find_if(reversed, IsFlagged);
    const auto distance = static_cast<size_t>(std::ranges::distance(reversed.begin(), nearest));
    return Shifted(objects, onePlace ? 1 : distance);
}

} // namespace

bool Restack(CPixoluneDoc& document, StackingKind kind)
{
    CObjectCanvas& canvas = document.Canvas();
    const bool toFront = kind == StackingKind::MoveToFront || kind == StackingKind::MoveForward;
    const bool onePlace = kind == StackingKind::MoveForward || kind == StackingKind::MoveBackward;
    if (canvas.objects.IsEmpty())
        return Refuse(document, Str::NoObject);
    if (IsFlagged(toFront ? canvas.objects.Top() : canvas.objects.Bottom()))
        return Refuse(document, toFront ? Str::AlreadyInFront : Str::AlreadyBack);
    if (std::ranges::none_of(canvas.objects, IsFlagged))
        return Refuse(document, Str::NoneSelected);

    auto command = std::make_unique<CStackingCommand>(kind, canvas);
    Objects order =
        toFront ? Moved(canvas.objects, onePlace) : Moved(canvas.objects | std::views::reverse, onePlace);
    if (!toFront)
        std::ranges::reverse(order);
    canvas.objects.Clear();
    for (Ref<CPicObject>& object : order)
        canvas.objects.Append(std::move(object));
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged();
    return true;
}

bool MoveObjectsTo(CPixoluneDoc& document, const CObjectList& moved, size_t place)
{
    CObjectCanvas& canvas = document.Canvas();
    std::unordered_set<const CPicObject*> movedOnes;
    for (const Ref<CPicObject>& object : moved)
        movedOnes.insert(object.Get());
    CObjectList order;
    CObjectList block;
    size_t insertAt = 0;
    for (size_t at = 0; at < canvas.objects.Count(); ++at) {
        const Ref<CPicObject>& object = canvas.objects.At(at);
        const bool isMoved = movedOnes.contains(object.Get());
        (isMoved ? block : order).Append(object);
        if (!isMoved && at < place)
            ++insertAt;
    }
    order.InsertAll(insertAt, block);
    if (block.IsEmpty() || std::ranges::equal(order, canvas.objects))
        return false;

    const bool forward = insertAt > canvas.objects.Find(block.Bottom().Get());
    auto command = std::make_unique<CStackingCommand>(
        forward ? StackingKind::MoveForward : StackingKind::MoveBackward, canvas);
    canvas.objects = std::move(order);
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged();
    return true;
}
