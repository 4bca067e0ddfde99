// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ClipboardCommands.h"

#include "canvas/PixoluneView.h"
#include "canvas/SelectedPixels.h"
#include "document/Refusal.h"
#include "fileio/ClipboardStream.h"
#include "fileio/DocumentFiles.h"
#include "history/ObjectListCommand.h"
#include "history/PixelEditCommand.h"
#include "model/DibOperations.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

namespace {

/// A picture that stays as it was copied, whatever happens to its object.
struct Copied {
    PictureCutting cutting;
    uint8_t transparency = 0;
};
using CopiedList = std::vector<Copied>;

/// All copied pictures as one, over each other at their places.
CPackedDib MergedPicture(const CopiedList& pictures)
{
    CObjectList objects;
    Rect bounds;
    for (const Copied& picture : pictures) {
        auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(picture.cutting.dib.Duplicate(), ""));
        object->x = picture.cutting.corner.x;
        object->y = picture.cutting.corner.y;
        object->transparency = picture.transparency;
        object->visible = true;
        bounds = bounds.United(object->Rectangle());
        objects.Append(std::move(object));
    }
    return FlattenObjects(objects, bounds);
}

bool PutOnClipboard(const CPixoluneDoc& document, CopiedList copied)
{
    const auto pictures = std::make_shared<const CopiedList>(std::move(copied));
    ClipboardOffer offer;
    for (const Copied& picture : *pictures)
        offer.origins.push_back(picture.cutting.corner);
    offer.privateStream = [pictures] {
        std::vector<CopiedPicture> entries;
        for (const Copied& picture : *pictures)
            entries.push_back({picture.cutting.dib, picture.transparency});
        return BuildClipboardStream(entries);
    };
    offer.picture = [pictures] { return MergedPicture(*pictures); };
    return document.Services().clipboard.Offer(std::move(offer));
}

/// The selected objects' pictures as the selection cuts them; none, with a message, when there is nothing.
std::optional<CopiedList> CutOutActiveObjects(const CPixoluneView& view)
{
    const CPixoluneDoc& document = view.Document();
    if (!RequireActiveObjects(document))
        return std::nullopt;
    CopiedList copied;
    for (const Ref<CPicObject>& object : document.Canvas().ActiveObjects()) {
        const CPackedDib& dib = object->image->Dib();
        const Point corner{object->x, object->y};
        if (dib.IsEmpty() || (!view.Selection().IsEmpty() && !HasOpaquePixel(dib, corner, view.Selection())))
            continue;
        PictureCutting cutting = CutToRegion(dib, corner, view.Selection());
        if (cutting.dib.IsEmpty()) {
            Refuse(document, Str::OutOfMemory);
            return std::nullopt;
        }
        copied.push_back({std::move(cutting), object->transparency});
    }
    if (copied.empty()) {
        Refuse(document, Str::SelectedPartEmpty);
        return std::nullopt;
    }
    return copied;
}

bool RemoveActiveObjects(CPixoluneDoc& document, ObjectListKind kind)
{
    if (!RequireActiveObjects(document))
        return false;
    CObjectCanvas& canvas = document.Canvas();
    auto command = std::make_unique<CObjectListCommand>(kind, canvas);
    canvas.objects.RemoveIf([](const CPicObject& object) { return object.IsActive(); });
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyObjectSelectionChanged();
    document.NotifyFrameChanged();
    return true;
}

/// Clears the selected part of the selected objects; locked ones keep their pixels.
bool ClearSelectedPart(CPixoluneView& view, PixelEditKind kind)
{
    CPixoluneDoc& document = view.Document();
    if (!RequireActiveObjects(document))
        return false;
    auto command = std::make_unique<CPixelEditCommand>(kind);
    command->SetDocument(&document);
    for (const Ref<CPicObject>& object : document.Canvas().ActiveObjects()) {
        const CPackedDib& dib = object->image->Dib();
        const Point corner{object->x, object->y};
        if (object->locked || dib.IsEmpty() || !HasOpaquePixel(dib, corner, view.Selection()))
            continue;
        CPackedDib cleared = dib.Duplicate();
        if (cleared.IsEmpty()) {
            command->Undo();
            return Refuse(document, Str::OutOfMemory);
        }
        ClearRegion(cleared, corner, view.Selection());
        command->AddPicture(object->image, object->image->Exchange(std::move(cleared)));
    }
    if (command->IsEmpty())
        return Refuse(document, Str::SelectedPartEmpty);
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(view.Selection().Bounds());
    return true;
}

bool IsClearingConfirmed(const CPixoluneView& view)
{
    return view.Document().Services().ui.AskYesNo(std::string(Text(Str::ClearSelection)));
}

/// The pictures of copied files; those that cannot be loaded are left out.
void AppendFiles(AppServices& services, std::vector<PastedPicture>& pictures)
{
    for (const std::filesystem::path& path : services.clipboard.Files()) {
        CObjectCanvas loaded;
        if (!LoadFile(loaded, path, services))
            continue;
        for (const Ref<CPicObject>& object : loaded.objects)
            pictures.push_back({object->image->Exchange({}), object->transparency});
    }
}

/// What the clipboard holds; empty when it holds nothing usable.
std::vector<PastedPicture> FetchPictures(AppServices& services)
{
    if (const auto stream = services.clipboard.PrivateStream()) {
        auto pictures = ParseClipboardStream(*stream);
        return pictures ? std::move(*pictures) : std::vector<PastedPicture>();
    }
    std::vector<PastedPicture> pictures;
    if (CPackedDib picture = services.clipboard.Picture(); !picture.IsEmpty())
        pictures.push_back({std::move(picture), 0});
    else
        AppendFiles(services, pictures);
    return pictures;
}

/// Where each picture goes.
std::vector<Point> PlacesFor(const CPixoluneView& view, const std::vector<PastedPicture>& pictures)
{
    std::vector<Point> places = view.Document().Services().clipboard.Origins();
    const bool known = places.size() == pictures.size();
    const Rect shown = view.VisibleDocumentRect();
    const auto centred = [&](Size size) {
        return Point{shown.left + (shown.Width() - size.width) / 2,
                     shown.top + (shown.Height() - size.height) / 2};
    };
    if (!known) {
        places.clear();
        for (const PastedPicture& picture : pictures)
            places.push_back(centred(picture.dib.Size()));
        return places;
    }
    Rect bounds;
    for (size_t i = 0; i < pictures.size(); ++i)
        bounds = bounds.United(Rect::At(places[i], pictures[i].dib.Size()));
    if (!bounds.Intersected(shown).IsEmpty())
        return places;
    const Point corner = centred({bounds.Width(), bounds.Height()});
    for (Point& place : places)
        place = {AddClamped(place.x, corner.x - bounds.left), AddClamped(place.y, corner.y - bounds.top)};
    return places;
}

} // namespace

bool Copy(CPixoluneView& view)
{
    std::optional<CopiedList> copied = CutOutActiveObjects(view);
    return copied && PutOnClipboard(view.Document(), std::move(*copied));
}

bool CopyMerged(CPixoluneView& view)
{
    const CPixoluneDoc& document = view.Document();
    CPackedDib frame = Flatten(document.Canvas());
    if (frame.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    if (!HasOpaquePixel(frame, {0, 0}, view.Selection()))
        return Refuse(document, Str::SelectedPartEmpty);
    CopiedList copied;
    copied.push_back({CutToRegion(frame, {0, 0}, view.Selection()), 0});
    if (copied.front().cutting.dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    return PutOnClipboard(document, std::move(copied));
}

bool Cut(CPixoluneView& view)
{
    if (!IsClearingConfirmed(view) || !Copy(view))
        return false;
    return view.Selection().IsEmpty() ? RemoveActiveObjects(view.Document(), ObjectListKind::Cut)
                                      : ClearSelectedPart(view, PixelEditKind::Cut);
}

bool Delete(CPixoluneView& view)
{
    if (!IsClearingConfirmed(view))
        return false;
    return view.Selection().IsEmpty() ? RemoveActiveObjects(view.Document(), ObjectListKind::Delete)
                                      : ClearSelectedPart(view, PixelEditKind::Delete);
}

bool Paste(CPixoluneView& view)
{
    CPixoluneDoc& document = view.Document();
    std::vector<PastedPicture> pictures = FetchPictures(document.Services());
    if (pictures.empty())
        return false;
    const std::vector<Point> places = PlacesFor(view, pictures);
    CObjectCanvas& canvas = document.Canvas();
    auto command = std::make_unique<CObjectListCommand>(ObjectListKind::Paste, canvas);
    CObjectList pasted;
    for (size_t i = 0; i < pictures.size(); ++i) {
        CPackedDib dib =
            pictures[i].dib.BitCount() == 32 ? std::move(pictures[i].dib) : ConvertTo32Bits(pictures[i].dib);
        if (dib.IsEmpty())
            return Refuse(document, Str::OutOfMemory);
        auto object = MakeShared<CPicObject>(document.NewImage(std::move(dib)));
        object->x = places[i].x;
        object->y = places[i].y;
        object->transparency = pictures[i].transparency;
        object->visible = true;
        object->SetSelected(true);
        pasted.Append(std::move(object));
    }
    canvas.DeselectAll();
    for (const Ref<CPicObject>& object : pasted)
        object->SetSelected(true);
    canvas.objects.InsertAll(canvas.objects.Count(), pasted);
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyObjectSelectionChanged();
    document.NotifyFrameChanged();
    return true;
}
