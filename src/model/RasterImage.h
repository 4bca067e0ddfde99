// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/memory/SharedObj.h"

#include <cstdint>
#include <string>

/// A reference-counted picture with its name and selected flag. Several commands and the document may hold
/// the same record; the pixels change hands by Exchange.
class CRasterImage final : public CSharedObj {
public:
    CRasterImage() = default;
    CRasterImage(CPackedDib dib, std::string objectName) : name(std::move(objectName))
    {
        Attach(std::move(dib));
    }

    [[nodiscard]] int Width() const { return m_dib.IsEmpty() ? 0 : m_dib.Width(); }
    [[nodiscard]] int Height() const { return m_dib.IsEmpty() ? 0 : m_dib.Height(); }
    [[nodiscard]] int BitCount() const { return m_dib.IsEmpty() ? 0 : m_dib.BitCount(); }
    [[nodiscard]] const CPackedDib& Dib() const { return m_dib; }
    /// For tools that paint into the picture as it stands; asked for anew for every change.
    [[nodiscard]] CPackedDib& MutableDib()
    {
        m_contentId = NewContentId();
        return m_dib;
    }
    /// Another number after every change of the pixels; no two pictures ever have the same.
    [[nodiscard]] uint64_t ContentId() const { return m_contentId; }

    /// Takes over a picture, which may be empty, and frees the one held until now.
    void Attach(CPackedDib dib) { MutableDib() = std::move(dib); }
    /// Takes over a picture and hands out the one held until now.
    [[nodiscard]] CPackedDib Exchange(CPackedDib dib)
    {
        std::swap(MutableDib(), dib);
        return dib;
    }

    /// The 32-bit value (alpha in the high byte) of pixel (x, y), y from the top; 0 outside the picture.
    [[nodiscard]] uint32_t PixelAt(int x, int y) const;

    std::string name;
    bool selected = false;

private:
    [[nodiscard]] static uint64_t NewContentId();

    CPackedDib m_dib;
    uint64_t m_contentId = NewContentId();
};
