// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/InPlaceStroke.h"

#include "platform/pen/SegmentMask.h"

#include <algorithm>
#include <cstring>

CInPlaceStroke::CInPlaceStroke(Ref<CRasterImage> image) : m_image(std::move(image)), m_old(m_image)
{
    m_image->SetPainter(this);
}

CInPlaceStroke::~CInPlaceStroke()
{
    if (m_isIntact)
        m_image->EndPainting();
}

bool CInPlaceStroke::Prepare(const Rect& rect)
{
    if (!m_isIntact)
        return false;
    m_image->AnnounceChange(rect);
    return m_old.IsIntact();
}

bool CInPlaceStroke::Prepare(const CCoverageMask& mask)
{
    // The box of a slanting line is far more than the line.
    const Rect& bounds = mask.Bounds();
    for (int top = bounds.top; top < bounds.bottom; top += CPictureSnapshot::kTileHeight) {
        Rect band;
        for (int y = top; y < std::min(top + CPictureSnapshot::kTileHeight, bounds.bottom); ++y)
            band = band.United({mask.RunOf(y).left, y, mask.RunOf(y).right, y + 1});
        if (!band.IsEmpty() && !Prepare(band))
            return false;
    }
    return m_isIntact;
}

std::optional<CPixelChanges> CInPlaceStroke::Changes()
{
    const CPackedDib& dib = m_image->Dib();
    const auto width = static_cast<size_t>(dib.Width());
    CPixelChangesBuilder builder;
    bool fits = true;
    const Rect copied = m_old.CopiedBounds();
    for (int y = copied.bottom; y-- > copied.top && fits;) {
        const auto* shown = reinterpret_cast<const uint32_t*>(dib.Row(y));
        const size_t first = static_cast<size_t>(dib.Height() - 1 - y) * width;
        m_old.ForEachCopied(y, [&](int x, std::span<const uint32_t> old) {
            fits = fits && builder.Compare(first + static_cast<size_t>(x), shown + x, old.data(), old.size());
        });
    }
    return fits ? builder.Finish() : std::nullopt;
}

void CInPlaceStroke::Restore()
{
    if (!HasPainted())
        return;
    const Rect copied = m_old.CopiedBounds();
    for (int y = copied.top; y < copied.bottom; ++y) {
        m_old.ForEachCopied(y, [&](int x, std::span<const uint32_t> old) {
            m_image->AnnounceChange({x, y, x + static_cast<int>(old.size()), y + 1});
            std::memcpy(Pixels().Row(y) + ptrdiff_t{x} * 4, old.data(), old.size_bytes());
        });
    }
}

void CInPlaceStroke::PutBack()
{
    Restore();
    m_isIntact = false;
}
