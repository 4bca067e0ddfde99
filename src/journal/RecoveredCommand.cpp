// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/RecoveredCommand.h"

#include "canvas/SelectionCommand.h"

#include <algorithm>
#include <utility>

namespace {

using Command = CRecoveredCommand;

int Get(const CPicObject& object, ObjectAttribute which)
{
    switch (which) {
    case ObjectAttribute::X:
        return object.x;
    case ObjectAttribute::Y:
        return object.y;
    case ObjectAttribute::Locked:
        return object.locked;
    case ObjectAttribute::Visible:
        return object.visible;
    case ObjectAttribute::Transparency:
        break;
    }
    return object.transparency;
}

void Set(CPicObject& object, ObjectAttribute which, int value)
{
    switch (which) {
    case ObjectAttribute::X:
        object.x = value;
        break;
    case ObjectAttribute::Y:
        object.y = value;
        break;
    case ObjectAttribute::Locked:
        object.locked = value != 0;
        break;
    case ObjectAttribute::Visible:
        object.visible = value != 0;
        break;
    case ObjectAttribute::Transparency:
        object.transparency = static_cast<uint8_t>(value);
        break;
    }
}

/// Swaps each kind of part with the document's.
struct CExchanger {
    CPixoluneDoc& document;

    void operator()(Command::AttributePart& part) const
    {
        const int current = Get(*part.object, part.which);
        Set(*part.object, part.which, std::exchange(part.saved, current));
    }
    void operator()(Command::NamePart& part) const
    {
        if (part.object->image)
            std::swap(part.object->image->name, part.saved);
    }
    void operator()(CSavedPicture& part) const { part.Exchange(); }
    void operator()(Command::ListPart& part) const { part.list.Exchange(document, part.others); }
    void operator()(Size& part) const
    {
        std::swap(document.Canvas().width, part.width);
        std::swap(document.Canvas().height, part.height);
        document.NotifyCanvasSizeChanged();
    }
    void operator()(Command::SelectsPart& part) const { part.object->SetSelected(true); }
    void operator()(Command::SelectionPart& part) const
    {
        CRegion current = part.selection->region;
        InstallSelection(*part.selection, std::exchange(part.saved, std::move(current)));
    }
    void operator()(Command::SelectionMovePart& part) const
    {
        part.distance = {-part.distance.x, -part.distance.y};
        CRegion moved = part.selection->region;
        if (moved.Translate(part.distance.x, part.distance.y))
            InstallSelection(*part.selection, std::move(moved));
    }
};

/// Tells each kind of part.
struct CTeller {
    ICommandParts& parts;

    void operator()(const Command::AttributePart& part) const
    {
        parts.Attribute(part.object, part.which, part.saved);
    }
    void operator()(const Command::NamePart& part) const { parts.Name(part.object, part.saved); }
    void operator()(const CSavedPicture& part) const { parts.Picture(part.Image(), part.Version()); }
    void operator()(const Command::ListPart& part) const { part.list.VisitParts(parts, part.others); }
    void operator()(const Size& part) const { parts.CanvasSize(part); }
    void operator()(const Command::SelectsPart& part) const { parts.Selects(part.object); }
    void operator()(const Command::SelectionPart& part) const
    {
        parts.Selection(Ref<CSharedObj>(part.selection.Get()), part.saved);
    }
    void operator()(const Command::SelectionMovePart& part) const
    {
        parts.SelectionMove(Ref<CSharedObj>(part.selection.Get()), part.distance);
    }
};

} // namespace

CRecoveredCommand::CRecoveredCommand(std::string name, std::vector<Part> parts)
    : CEditCommand(std::move(name)), m_parts(std::move(parts)),
      m_keepsName(std::ranges::any_of(
          m_parts, [](const Part& part) { return std::holds_alternative<SelectionMovePart>(part); }))
{
}

void CRecoveredCommand::Exchange()
{
    for (Part& part : m_parts)
        std::visit(CExchanger{*Document()}, part);
    Document()->NotifyObjectsChanged();
    Document()->NotifyObjectSelectionChanged();
    Document()->NotifyFrameChanged();
}

void CRecoveredCommand::Undo()
{
    Exchange();
    if (!m_keepsName)
        RenameToRedo();
}

void CRecoveredCommand::Redo()
{
    Exchange();
    if (!m_keepsName)
        RenameToUndo();
}

size_t CRecoveredCommand::HeldBytes() const
{
    size_t bytes = 0;
    for (const Part& part : m_parts) {
        if (const auto* picture = std::get_if<CSavedPicture>(&part))
            bytes += picture->HeldBytes();
    }
    return bytes;
}

void CRecoveredCommand::VisitParts(ICommandParts& parts) const
{
    for (const Part& part : m_parts)
        std::visit(CTeller{parts}, part);
}
