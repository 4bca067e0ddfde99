// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <vector>

/// Swaps one member of some objects with saved values; the visibility, lock and opacity families.
template <auto Member, ObjectAttribute Attribute> class CMemberCommand : public CExchangeCommand {
public:
    using CExchangeCommand::CExchangeCommand;

    /// Captures the object's value as it is.
    void Add(const Ref<CPicObject>& object) { m_entries.push_back({object, (*object).*Member}); }
    [[nodiscard]] bool IsEmpty() const { return m_entries.empty(); }
    void VisitParts(ICommandParts& parts) const override
    {
        for (const Entry& entry : m_entries)
            parts.Attribute(entry.object, Attribute, entry.saved);
    }

protected:
    void Exchange() override
    {
        Rect touched;
        for (Entry& entry : m_entries) {
            std::swap((*entry.object).*Member, entry.saved);
            touched = touched.United(entry.object->Rectangle());
        }
        Document()->NotifyObjectsChanged();
        Document()->NotifyFrameChanged(touched);
    }

private:
    struct Entry {
        Ref<CPicObject> object;
        std::remove_reference_t<decltype(std::declval<CPicObject&>().*Member)> saved;
    };
    std::vector<Entry> m_entries;
};
