// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PlacementOperations.h"

#include "document/Refusal.h"

#include <algorithm>
#include <limits>

namespace {

/// Where the edge of the selected objects goes that the command lines up: the canvas's edge for a single
/// object, else the outermost edge of all flagged ones, hidden ones included.
struct Edges {
    int left = std::numeric_limits<int>::max();
    int top = std::numeric_limits<int>::max();
    int right = -std::numeric_limits<int>::max();
    int bottom = -std::numeric_limits<int>::max();
};

Edges TargetEdges(const CObjectCanvas& canvas)
{
    if (canvas.CountSelected() == 1)
        return {0, 0, canvas.width, canvas.height};
    Edges edges;
    for (const Ref<CPicObject>& object : canvas.FlaggedObjects()) {
        const Rect rect = object->Rectangle();
        edges.left = std::min(edges.left, rect.left);
        edges.top = std::min(edges.top, rect.top);
        edges.right = std::max(edges.right, rect.right);
        edges.bottom = std::max(edges.bottom, rect.bottom);
    }
    return edges;
}

int Middle(int first, int second)
{
    return static_cast<int>((int64_t{first} + second) / 2);
}

Point Distance(PlacementKind kind, const Rect& rect, const Edges& edges, Size canvas)
{
    const int toMiddleX = AddClamped(canvas.width >> 1, -Middle(rect.left, rect.right));
    const int toMiddleY = AddClamped(canvas.height >> 1, -Middle(rect.top, rect.bottom));
    const auto difference = [](int target, int edge) {
        return static_cast<int>(std::clamp<int64_t>(int64_t{target} - edge, INT32_MIN, INT32_MAX));
    };
    switch (kind) {
    case PlacementKind::AlignLeft:
        return {difference(edges.left, rect.left), 0};
    case PlacementKind::AlignRight:
        return {difference(edges.right, rect.right), 0};
    case PlacementKind::AlignTop:
        return {0, difference(edges.top, rect.top)};
    case PlacementKind::AlignBottom:
        return {0, difference(edges.bottom, rect.bottom)};
    case PlacementKind::CenterHorizontally:
        return {toMiddleX, 0};
    case PlacementKind::CenterVertically:
        return {0, toMiddleY};
    case PlacementKind::CenterBoth:
        return {toMiddleX, toMiddleY};
    case PlacementKind::Move:
        break;
    }
    return {};
}

} // namespace

bool AlignObjects(CPixoluneDoc& document, PlacementKind kind)
{
    if (!RequireActiveObjects(document))
        return false;
    CObjectCanvas& canvas = document.Canvas();
    struct Step {
        Ref<CPicObject> object;
        Point by;
    };
    std::vector<Step> steps;
    const Edges edges = TargetEdges(canvas);
    for (const Ref<CPicObject>& object : canvas.ActiveObjects()) {
        const Point by = Distance(kind, object->Rectangle(), edges, canvas.Size());
        if (by != Point())
            steps.push_back({object, by});
    }
    if (std::ranges::any_of(steps, [](const Step& step) { return step.object->locked; }))
        return Refuse(document, Str::ObjectsLocked);
    if (steps.empty())
        return false;

    auto command = std::make_unique<CPlacementCommand>(kind);
    for (const Step& step : steps) {
        command->Add(step.object);
        document.NotifyFrameChanged(step.object->Rectangle());
        step.object->x = AddClamped(step.object->x, step.by.x);
        step.object->y = AddClamped(step.object->y, step.by.y);
        document.NotifyFrameChanged(step.object->Rectangle());
    }
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    return true;
}

bool BeginMove(CPixoluneDoc& document)
{
    const CObjectCanvas& canvas = document.Canvas();
    if (canvas.IsAnySelectedLocked())
        return Refuse(document, Str::ObjectsLocked);
    auto command = std::make_unique<CPlacementCommand>(PlacementKind::Move);
    for (const Ref<CPicObject>& object : canvas.ActiveObjects())
        command->Add(object);
    if (command->IsEmpty())
        return false;
    document.Record(std::move(command));
    return true;
}

void MoveSelected(CPixoluneDoc& document, int dx, int dy)
{
    const CObjectList moved = document.Canvas().ActiveObjects();
    for (const Ref<CPicObject>& object : moved)
        document.NotifyFrameChanged(object->Rectangle());
    document.Canvas().MoveSelected(dx, dy);
    for (const Ref<CPicObject>& object : moved)
        document.NotifyFrameChanged(object->Rectangle());
}

bool NudgeObjects(CPixoluneDoc& document, int dx, int dy)
{
    if (!BeginMove(document))
        return false;
    MoveSelected(document, dx, dy);
    document.NotifyObjectsChanged();
    return true;
}
