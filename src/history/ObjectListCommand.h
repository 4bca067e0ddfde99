// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

enum class ObjectListKind {
    NewObject,
    Duplicate,
    DeleteObjects,
    Combine,
    Paste,
    Delete,
    Cut,
    AddText,
    PaintRectangle,
    PaintEllipse,
    PaintPolygon,
    AddImageFiles,
    AddAvi,
};

/// Keeps a whole object list with its selection and swaps both with the document's. Objects that left the
/// list live on in the command.
class CListExchange {
public:
    /// Captures the list and the objects whose selected flag is set.
    explicit CListExchange(const CObjectCanvas& canvas)
        : m_objects(canvas.objects), m_selection(canvas.FlaggedObjects())
    {
    }
    CListExchange(CObjectList objects, CObjectList selection)
        : m_objects(std::move(objects)), m_selection(std::move(selection))
    {
    }
    void Exchange(CPixoluneDoc& document, OtherFlags others);
    void VisitParts(ICommandParts& parts, OtherFlags others) const
    {
        parts.List(m_objects, m_selection, others);
    }

private:
    CObjectList m_objects;
    CObjectList m_selection;
};

/// Objects came, went, or were replaced. Create it before the change.
class CObjectListCommand final : public CExchangeCommand {
public:
    CObjectListCommand(ObjectListKind kind, const CObjectCanvas& canvas);
    void VisitParts(ICommandParts& parts) const override { m_list.VisitParts(parts, OtherFlags::Keep); }

protected:
    void Exchange() override { m_list.Exchange(*Document(), OtherFlags::Keep); }

private:
    CListExchange m_list;
};
