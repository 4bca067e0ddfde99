// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <cstddef>
#include <optional>
#include <utility>

/// The picture that an image record does not show at the moment. Every pixel command keeps its pictures in
/// these, so how they are kept is decided in one place.
class CSavedPicture {
public:
    /// saved: what the record showed before, as a picture, which may be empty, or as the changes from what it
    /// shows now.
    template <typename Saved>
    CSavedPicture(Ref<CRasterImage> image, Saved saved)
        : m_image(std::move(image)), m_version(m_image->Keep(std::move(saved)))
    {
    }

    /// A version of the record that is kept already.
    CSavedPicture(Ref<CRasterImage> image, Ref<CPictureVersion> version)
        : m_image(std::move(image)), m_version(std::move(version))
    {
    }

    /// Swaps the kept picture with the one shown. The record's size and depth follow. Returns where the two
    /// differ; none when all of the picture may.
    std::optional<CChangedTiles> Exchange()
    {
        std::optional<CChangedTiles> touched;
        m_version = m_image->Show(m_version, &touched);
        return touched;
    }

    [[nodiscard]] const Ref<CRasterImage>& Image() const { return m_image; }
    [[nodiscard]] const Ref<CPictureVersion>& Version() const { return m_version; }
    [[nodiscard]] size_t HeldBytes() const { return m_version->HeldBytes(); }

private:
    Ref<CRasterImage> m_image;
    Ref<CPictureVersion> m_version;
};

/// Where the object that shows the record stands on the canvas; empty when no object of the document does.
[[nodiscard]] inline Rect RectangleShowing(const CObjectCanvas& canvas, const CRasterImage* image)
{
    const size_t index = canvas.objects.FindByImage(image);
    return index == CObjectList::kNone ? Rect() : canvas.objects.At(index)->Rectangle();
}
