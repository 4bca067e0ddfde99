// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ShownPixel.h"
#include "cli/Printing.h"
#include "cli/Quoting.h"
#include "cli/statements/StatementFamilies.h"
#include "model/Compositing.h"

#include <ranges>

namespace {

/// A statement that prints something of the current document and takes no values.
template <void (*print)(CSession&)> Outcome Print(CSession& session, CArguments& arguments)
{
    if (!arguments.Finish())
        return Outcome::ScriptError;
    print(session);
    return Outcome::Done;
}

void PrintCanvas(CSession& session)
{
    session.Output() << CanvasLine(session.Canvas()) << '\n';
}

void PrintObjects(CSession& session)
{
    const CObjectList& objects = session.Canvas().objects;
    for (size_t index = 0; index < objects.Count(); ++index)
        session.Output() << ObjectLine(index, *objects.At(index)) << '\n';
}

void PrintHistory(CSession& session)
{
    const CUndoManager& history = session.Document().History();
    for (const auto& command : history.UndoList())
        session.Output() << "undo " << Quoted(command->Name()) << '\n';
    for (const auto& command : history.RedoList() | std::views::reverse)
        session.Output() << "redo " << Quoted(command->Name()) << '\n';
}

void PrintMenuItem(CSession& session, std::string_view name, CommandId id)
{
    const CommandContext context = session.Context();
    session.Output() << name << (IsCommandEnabled(context, id) ? " enabled " : " disabled ")
                     << Quoted(FindCommand(id).currentText(context)) << '\n';
}

void PrintMenu(CSession& session)
{
    PrintMenuItem(session, "undo-item", CommandId::EditUndo);
    PrintMenuItem(session, "redo-item", CommandId::EditRedo);
}

void PrintSelection(CSession& session)
{
    const CRegion& region = session.View().Selection();
    if (region.IsEmpty()) {
        session.Output() << "selection none\n";
        return;
    }
    const Rect& bounds = region.Bounds();
    session.Output() << "selection " << bounds.left << ' ' << bounds.top << ' ' << bounds.right << ' '
                     << bounds.bottom << " pixels " << region.Area() << '\n';
}

void PrintStatus(CSession& session)
{
    session.Output() << Quoted(session.View().PointerText()) << '\n';
}

void PrintModified(CSession& session)
{
    session.Output() << "modified " << session.Document().IsModified() << '\n';
}

void PrintChecksum(CSession& session)
{
    session.Output() << "checksum " << std::hex << ChecksumOf(session.Document()) << std::dec << '\n';
}

Outcome PrintPixel(CSession& session, CArguments& arguments)
{
    const Point point = arguments.Coordinates();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    uint32_t pixel = 0;
    if (session.Canvas().Rectangle().Contains(point)) {
        // One pixel of the frame needs no more than itself.
        CPackedDib frame = FlattenObjects(session.Canvas().objects, Rect::At(point, {1, 1}));
        if (frame.IsEmpty())
            return session.Fail(std::string(Text(Str::OutOfMemory)));
        pixel = CRasterImage(std::move(frame), {}).PixelAt(0, 0);
    }
    session.Output() << PixelLine(pixel) << '\n';
    return Outcome::Done;
}

Outcome PrintObjectPixel(CSession& session, CArguments& arguments)
{
    const Ref<CPicObject> object = arguments.Object(session.Canvas());
    const Point point = arguments.Coordinates();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    const uint32_t pixel = object->image ? object->image->PixelAt(point.x, point.y) : 0;
    session.Output() << PixelLine(pixel) << '\n';
    return Outcome::Done;
}

Outcome PrintPicked(CSession& session, CArguments& arguments)
{
    const Point point = arguments.Coordinates();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    const uint32_t pixel =
        session.Canvas().Rectangle().Contains(point) ? ShownPixel(session.Canvas(), point) : 0;
    const uint32_t transparency = 255 - (pixel >> 24);
    if (transparency == 255)
        session.Output() << "none";
    else
        session.Output() << (pixel >> 16 & 255) << ' ' << (pixel >> 8 & 255) << ' ' << (pixel & 255);
    session.Output() << ' ' << transparency << '\n';
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"print canvas", "", "Prints the canvas's size, its fields and the number of objects.", Needs::Document,
     Print<PrintCanvas>},
    {"print objects", "", "Prints a line for each object, bottom first.", Needs::Document,
     Print<PrintObjects>},
    {"print history", "",
     "Prints the names of the undo list, oldest first, then of the redo list, the next one first.",
     Needs::Document, Print<PrintHistory>},
    {"print menu", "", "Prints the Undo and Redo items of the Edit menu.", Needs::Document, Print<PrintMenu>},
    {"print selection", "", "Prints the bounds of the selection and its number of pixels.", Needs::Document,
     Print<PrintSelection>},
    {"print pixel", "X Y", "Prints red, green, blue and alpha of the frame.", Needs::Document, PrintPixel},
    {"print object-pixel", "K X Y", "Prints red, green, blue and alpha of an object's own picture.",
     Needs::Document, PrintObjectPixel},
    {"print picked", "X Y", "Prints red, green, blue and transparency that the pick-colour page shows.",
     Needs::Document, PrintPicked},
    {"print status", "", "Prints the status bar's text for the pointer.", Needs::Document,
     Print<PrintStatus>},
    {"print checksum", "",
     "Prints a number for all that the document holds, every byte of its pictures included.", Needs::Document,
     Print<PrintChecksum>},
    {"print modified", "", "Prints whether the document has changes that are not saved.", Needs::Document,
     Print<PrintModified>},
};

} // namespace

std::span<const StatementRow> PrintStatements()
{
    return kRows;
}
