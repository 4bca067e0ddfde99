// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionState.h"
#include "history/ObjectListCommand.h"
#include "history/SavedPicture.h"

#include <string>
#include <variant>
#include <vector>

/// A command that came back from a journal: parts in the order in which the command that was written down
/// swapped them.
class CRecoveredCommand final : public CEditCommand {
public:
    struct AttributePart {
        Ref<CPicObject> object;
        ObjectAttribute which;
        int saved;
    };
    struct NamePart {
        Ref<CPicObject> object;
        std::string saved;
    };
    struct ListPart {
        CListExchange list;
        OtherFlags others;
    };
    struct SelectsPart {
        Ref<CPicObject> object;
    };
    struct SelectionPart {
        Ref<CSelectionState> selection;
        CRegion saved;
    };
    struct SelectionMovePart {
        Ref<CSelectionState> selection;
        Point distance;
    };
    using Part = std::variant<AttributePart, NamePart, CSavedPicture, ListPart, ::Size, SelectsPart,
                              SelectionPart, SelectionMovePart>;

    CRecoveredCommand(std::string name, std::vector<Part> parts);

    void Undo() override;
    void Redo() override;
    [[nodiscard]] size_t HeldBytes() const override;
    void VisitParts(ICommandParts& parts) const override;

private:
    void Exchange();

    std::vector<Part> m_parts;
    bool m_keepsName;
};
