// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <cstddef>
#include <utility>

/// The picture that an image record does not show at the moment. Every pixel command keeps its pictures in
/// these, so how they are kept is decided in one place.
class CSavedPicture {
public:
    /// Keeps `saved` for the record; it may be empty.
    CSavedPicture(Ref<CRasterImage> image, CPackedDib saved)
        : m_image(std::move(image)), m_saved(std::move(saved))
    {
    }

    /// Swaps the kept picture with the one shown. The record's size and depth follow.
    void Exchange() { m_saved = m_image->Exchange(std::move(m_saved)); }

    [[nodiscard]] const Ref<CRasterImage>& Image() const { return m_image; }
    [[nodiscard]] size_t HeldBytes() const { return m_saved.Block().size(); }

private:
    Ref<CRasterImage> m_image;
    CPackedDib m_saved;
};

/// Where the object that shows the record stands on the canvas; empty when no object of the document does.
[[nodiscard]] inline Rect RectangleShowing(const CObjectCanvas& canvas, const CRasterImage* image)
{
    const size_t index = canvas.objects.FindByImage(image);
    return index == CObjectList::kNone ? Rect() : canvas.objects.At(index)->Rectangle();
}
