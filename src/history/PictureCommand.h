// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/SavedPicture.h"

#include <vector>

/// Common body of the pixel families: swaps the pictures of some image records and, where a change moved
/// objects as well, their positions.
class CPictureCommand : public CExchangeCommand {
public:
    using CExchangeCommand::CExchangeCommand;

    /// Keeps what the record showed before: a picture, which may be empty, or the changes from what it shows.
    /// The record shows the new picture already.
    void AddPicture(const Ref<CRasterImage>& image, CPackedDib saved)
    {
        m_pictures.emplace_back(image, std::move(saved));
    }
    void AddPicture(const Ref<CRasterImage>& image, CPixelChanges changes)
    {
        m_pictures.emplace_back(image, std::move(changes));
    }
    /// Keeps a position to be given back.
    void AddPosition(const Ref<CPicObject>& object, Point saved) { m_positions.push_back({object, saved}); }
    [[nodiscard]] bool IsEmpty() const { return m_pictures.empty() && m_positions.empty(); }
    [[nodiscard]] size_t HeldBytes() const override;
    void VisitParts(ICommandParts& parts) const override;

protected:
    void Exchange() override;

private:
    /// The part of the frame that the records cover now; all of it for more than one record.
    [[nodiscard]] Rect Covered() const;

    struct Position {
        Ref<CPicObject> object;
        Point saved;
    };
    std::vector<CSavedPicture> m_pictures;
    std::vector<Position> m_positions;
};
