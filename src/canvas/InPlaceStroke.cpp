// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/InPlaceStroke.h"

#include <cstring>

namespace {

void CopyRows(const BitmapView& to, const ConstBitmapView& from)
{
    for (int y = 0; y < to.height; ++y)
        std::memcpy(to.Row(y), from.Row(y), static_cast<size_t>(to.width) * 4);
}

} // namespace

CInPlaceStroke::CInPlaceStroke(Ref<CRasterImage> image)
    : m_image(std::move(image)), m_old({0, 0, m_image->Width(), m_image->Height()})
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
    m_image->AnnounceChange(rect.top, rect.bottom);
    return m_old.Include(
        rect, [&](const BitmapView& room, const Rect& part) { CopyRows(room, Pixels().Part(part)); });
}

std::optional<CPixelChanges> CInPlaceStroke::Changes() const
{
    return CPixelChanges::Between(m_image->Dib(), ViewOf(m_old.Picture().dib), m_old.Picture().position);
}

void CInPlaceStroke::Restore()
{
    if (!HasPainted())
        return;
    const Rect painted = m_old.Picture().Rectangle();
    m_image->AnnounceChange(painted.top, painted.bottom);
    CopyRows(Pixels().Part(painted), ViewOf(m_old.Picture().dib));
}

void CInPlaceStroke::PutBack()
{
    Restore();
    m_isIntact = false;
}
