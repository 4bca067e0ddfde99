// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/PlacementCommand.h"

namespace {

constexpr Str kNames[] = {
    Str::UndoMove,       Str::UndoAlignTop,         Str::UndoAlignBottom,        Str::UndoAlignLeft,
    Str::UndoAlignRight, Str::UndoCenterVertically, Str::UndoCenterHorizontally, Str::UndoCenterBoth};

} // namespace

CPlacementCommand::CPlacementCommand(PlacementKind kind) : CExchangeCommand(kNames[static_cast<size_t>(kind)])
{
}

void CPlacementCommand::Add(const Ref<CPicObject>& object)
{
    m_entries.push_back({object, {object->x, object->y}});
}

void CPlacementCommand::Exchange()
{
    for (Entry& entry : m_entries) {
        CPicObject& object = *entry.object;
        Document()->NotifyFrameChanged(object.Rectangle());
        std::swap(object.x, entry.saved.x);
        std::swap(object.y, entry.saved.y);
        object.SetSelected(true);
        Document()->NotifyFrameChanged(object.Rectangle());
    }
    Document()->NotifyObjectsChanged();
    Document()->NotifyObjectSelectionChanged();
}

void CPlacementCommand::VisitParts(ICommandParts& parts) const
{
    for (const Entry& entry : m_entries) {
        parts.Attribute(entry.object, ObjectAttribute::X, entry.saved.x);
        parts.Attribute(entry.object, ObjectAttribute::Y, entry.saved.y);
        parts.Selects(entry.object);
    }
}
