// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <vector>

enum class PlacementKind {
    Move,
    AlignTop,
    AlignBottom,
    AlignLeft,
    AlignRight,
    CenterVertically,
    CenterHorizontally,
    CenterBoth,
};

/// Swaps the positions of some objects with saved ones; the objects touched become selected.
class CPlacementCommand final : public CExchangeCommand {
public:
    explicit CPlacementCommand(PlacementKind kind);

    /// Captures where the object stands.
    void Add(const Ref<CPicObject>& object);
    [[nodiscard]] bool IsEmpty() const { return m_entries.empty(); }
    void VisitParts(ICommandParts& parts) const override;

protected:
    void Exchange() override;

private:
    struct Entry {
        Ref<CPicObject> object;
        Point saved;
    };
    std::vector<Entry> m_entries;
};
