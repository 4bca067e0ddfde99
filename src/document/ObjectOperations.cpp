// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/ObjectOperations.h"

#include "document/Refusal.h"
#include "history/CanvasSizeCommand.h"
#include "history/MakeFrameCommand.h"
#include "history/PixelEditCommand.h"
#include "model/Compositing.h"
#include "model/DibOperations.h"

namespace {

Ref<CPicObject> VisibleSelectedObject(const CPixoluneDoc& document, CPackedDib dib, Point corner)
{
    auto object = MakeShared<CPicObject>(document.NewImage(std::move(dib)));
    object->x = corner.x;
    object->y = corner.y;
    object->visible = true;
    object->SetSelected(true);
    return object;
}

/// What every command of the object list reports.
void RecordListChange(CPixoluneDoc& document, std::unique_ptr<CEditCommand> command)
{
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyObjectSelectionChanged();
    document.NotifyFrameChanged();
}

/// A copy at the same place, opaque, visible and unlocked or locked as the source is. None when memory
/// runs out.
Ref<CPicObject> CopyOf(const CPixoluneDoc& document, const CPicObject& source)
{
    const bool hasPicture = source.image && !source.image->Dib().IsEmpty();
    CPackedDib dib = hasPicture ? source.image->Dib().Duplicate() : CPackedDib();
    if (hasPicture && dib.IsEmpty())
        return nullptr;
    if (hasPicture)
        dib.SetWrittenText(source.image->Dib().WrittenText());
    Ref<CPicObject> copy = VisibleSelectedObject(document, std::move(dib), {source.x, source.y});
    copy->locked = source.locked;
    copy->fallbackSize = source.fallbackSize;
    return copy;
}

Rect BoundsOf(const CObjectList& objects)
{
    Rect bounds;
    for (const Ref<CPicObject>& object : objects)
        bounds = bounds.United(object->Rectangle());
    return bounds;
}

} // namespace

void AddObject(CPixoluneDoc& document, ObjectListKind kind, CPackedDib dib, Point corner,
               uint8_t transparency)
{
    CObjectCanvas& canvas = document.Canvas();
    auto command = std::make_unique<CObjectListCommand>(kind, canvas);
    canvas.DeselectAll();
    Ref<CPicObject> object = VisibleSelectedObject(document, std::move(dib), corner);
    object->transparency = transparency;
    canvas.objects.Append(std::move(object));
    RecordListChange(document, std::move(command));
}

bool NewObject(CPixoluneDoc& document)
{
    CPackedDib dib = CPackedDib::CreateTransparent(document.Canvas().width, document.Canvas().height);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    AddObject(document, ObjectListKind::NewObject, std::move(dib), {0, 0}, 0);
    return true;
}

bool DuplicateObjects(CPixoluneDoc& document)
{
    CObjectCanvas& canvas = document.Canvas();
    const CObjectList sources = canvas.FlaggedObjects();
    if (sources.IsEmpty())
        return Refuse(document, Str::NoneSelected);
    auto command = std::make_unique<CObjectListCommand>(ObjectListKind::Duplicate, canvas);
    CObjectList copies;
    for (const Ref<CPicObject>& source : sources) {
        Ref<CPicObject> copy = CopyOf(document, *source);
        if (!copy)
            return Refuse(document, Str::OutOfMemory);
        copies.Append(std::move(copy));
    }
    canvas.DeselectAll();
    for (const Ref<CPicObject>& copy : copies)
        copy->SetSelected(true);
    canvas.objects.InsertAll(canvas.objects.Find(sources.Top().Get()) + 1, copies);
    RecordListChange(document, std::move(command));
    return true;
}

bool DeleteObjects(CPixoluneDoc& document)
{
    CObjectCanvas& canvas = document.Canvas();
    if (canvas.FlaggedObjects().IsEmpty())
        return Refuse(document, Str::NoneSelected);
    auto command = std::make_unique<CObjectListCommand>(ObjectListKind::DeleteObjects, canvas);
    canvas.objects.RemoveIf([](const CPicObject& object) { return object.IsSelected(); });
    RecordListChange(document, std::move(command));
    return true;
}

bool CombineObjects(CPixoluneDoc& document)
{
    CObjectCanvas& canvas = document.Canvas();
    const CObjectList sources = canvas.ActiveObjects();
    if (sources.IsEmpty())
        return Refuse(document, Str::NoVisibleObject);
    const Rect bounds = BoundsOf(sources);
    CPackedDib dib = FlattenObjects(sources, bounds);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    auto command = std::make_unique<CObjectListCommand>(ObjectListKind::Combine, canvas);
    const size_t place = canvas.objects.Find(sources.Bottom().Get());
    canvas.objects.RemoveIf([](const CPicObject& object) { return object.IsActive(); });
    canvas.objects.Insert(place, VisibleSelectedObject(document, std::move(dib), bounds.Corner()));
    RecordListChange(document, std::move(command));
    return true;
}

bool MakeFrame(CPixoluneDoc& document)
{
    CObjectCanvas& canvas = document.Canvas();
    CPackedDib dib = Flatten(canvas);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    auto command = std::make_unique<CMakeFrameCommand>(canvas);
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (!object->visible)
            continue;
        command->Add(object);
        object->visible = false;
        object->SetSelected(false);
    }
    canvas.objects.Append(VisibleSelectedObject(document, std::move(dib), {0, 0}));
    RecordListChange(document, std::move(command));
    return true;
}

bool TrimObjects(CPixoluneDoc& document)
{
    CObjectCanvas& canvas = document.Canvas();
    const CObjectList targets = canvas.ActiveObjects();
    if (targets.IsEmpty())
        return Refuse(document, Str::NoneSelected);
    struct Cut {
        Ref<CPicObject> object;
        Rect inner;
        CPackedDib dib;
    };
    std::vector<Cut> cuts;
    for (const Ref<CPicObject>& object : targets) {
        const CPackedDib& dib = object->image->Dib();
        if (dib.IsEmpty())
            continue;
        const Rect inner = OpaqueBounds(dib);
        if (inner.IsEmpty() || inner == Rect::At({0, 0}, dib.Size()))
            continue;
        CPackedDib cropped =
            CropByMargins(dib, inner.left, inner.top, dib.Width() - inner.right, dib.Height() - inner.bottom);
        if (cropped.IsEmpty())
            return Refuse(document, Str::OutOfMemory);
        cuts.push_back({object, inner, std::move(cropped)});
    }
    if (cuts.empty())
        return Refuse(document, Str::NoExcessBorder);

    auto command = std::make_unique<CPixelEditCommand>(PixelEditKind::Trim);
    for (Cut& cut : cuts) {
        CPicObject& object = *cut.object;
        command->AddPosition(cut.object, {object.x, object.y});
        command->AddPicture(object.image, object.image->Exchange(std::move(cut.dib)));
        object.x = AddClamped(object.x, cut.inner.left);
        object.y = AddClamped(object.y, cut.inner.top);
    }
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged();
    return true;
}

bool ResizeCanvas(CPixoluneDoc& document, Size size)
{
    CObjectCanvas& canvas = document.Canvas();
    if (size == canvas.Size())
        return false;
    auto command = std::make_unique<CCanvasSizeCommand>(canvas.Size());
    canvas.width = size.width;
    canvas.height = size.height;
    document.Record(std::move(command));
    document.NotifyCanvasSizeChanged();
    return true;
}
