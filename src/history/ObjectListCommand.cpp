// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/ObjectListCommand.h"

namespace {

constexpr Str kNames[] = {Str::UndoNewObject,    Str::UndoDuplicate,    Str::UndoDeleteObjects,
                          Str::UndoCombine,      Str::UndoPaste,        Str::UndoDelete,
                          Str::UndoCut,          Str::UndoAddText,      Str::UndoPaintRectangle,
                          Str::UndoPaintEllipse, Str::UndoPaintPolygon, Str::UndoAddImageFiles,
                          Str::UndoAddAvi};

} // namespace

void CListExchange::Exchange(CPixoluneDoc& document, OtherFlags others)
{
    CObjectCanvas& canvas = document.Canvas();
    CObjectList selectedNow = canvas.FlaggedObjects();
    std::swap(canvas.objects, m_objects);
    if (others == OtherFlags::Clear)
        canvas.DeselectAll();
    for (const Ref<CPicObject>& object : m_selection)
        object->SetSelected(true);
    m_selection = std::move(selectedNow);
    document.NotifyObjectsChanged();
    document.NotifyObjectSelectionChanged();
    document.NotifyFrameChanged();
}

CObjectListCommand::CObjectListCommand(ObjectListKind kind, const CObjectCanvas& canvas)
    : CExchangeCommand(kNames[static_cast<size_t>(kind)]), m_list(canvas)
{
}
