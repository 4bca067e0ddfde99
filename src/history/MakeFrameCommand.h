// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/ObjectListCommand.h"

#include <vector>

/// "Make frame as single object": an object-list exchange that also swaps the visible flags of the objects
/// that the merged one stands for.
class CMakeFrameCommand final : public CExchangeCommand {
public:
    explicit CMakeFrameCommand(const CObjectCanvas& canvas)
        : CExchangeCommand(Str::UndoMakeFrame), m_list(canvas)
    {
    }

    /// Captures the object's visible flag.
    void Add(const Ref<CPicObject>& object) { m_entries.push_back({object, object->visible}); }
    void VisitParts(ICommandParts& parts) const override
    {
        for (const Entry& entry : m_entries)
            parts.Attribute(entry.object, ObjectAttribute::Visible, entry.savedVisible);
        m_list.VisitParts(parts, OtherFlags::Keep);
    }

protected:
    void Exchange() override
    {
        for (Entry& entry : m_entries)
            std::swap(entry.object->visible, entry.savedVisible);
        m_list.Exchange(*Document(), OtherFlags::Keep);
    }

private:
    struct Entry {
        Ref<CPicObject> object;
        bool savedVisible;
    };
    CListExchange m_list;
    std::vector<Entry> m_entries;
};
