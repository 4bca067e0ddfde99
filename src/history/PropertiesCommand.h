// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/SavedPicture.h"

#include <optional>
#include <string>

/// What the Properties dialog edits, but for the picture.
struct ObjectProperties {
    int x = 0;
    int y = 0;
    bool locked = false;
    bool visible = false;
    uint8_t transparency = 0;
    std::string name;

    [[nodiscard]] static ObjectProperties Of(const CPicObject& object);
    void ApplyTo(CPicObject& object) const;
};

/// Swaps an object's properties with saved ones, and its picture where that was resized or written again.
class CPropertiesCommand final : public CExchangeCommand {
public:
    CPropertiesCommand(Ref<CPicObject> object, ObjectProperties saved, Str name = Str::UndoProperties)
        : CExchangeCommand(name), m_object(std::move(object)), m_saved(std::move(saved))
    {
    }

    /// Keeps the picture that the object showed before.
    void AddPicture(CPackedDib saved) { m_picture.emplace(m_object->image, std::move(saved)); }
    [[nodiscard]] size_t HeldBytes() const override { return m_picture ? m_picture->HeldBytes() : 0; }
    void VisitParts(ICommandParts& parts) const override;

protected:
    void Exchange() override;

private:
    Ref<CPicObject> m_object;
    ObjectProperties m_saved;
    std::optional<CSavedPicture> m_picture;
};
