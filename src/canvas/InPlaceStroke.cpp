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
    : m_image(std::move(image)), m_block(m_image->Dib().Block().data()),
      m_old({0, 0, m_image->Width(), m_image->Height()})
{
}

bool CInPlaceStroke::IsIntact() const
{
    return m_image->Dib().Block().data() == m_block &&
           m_old.Limits() == Rect{0, 0, m_image->Width(), m_image->Height()};
}

bool CInPlaceStroke::Prepare(const Rect& rect)
{
    return IsIntact() && m_old.Include(rect, [&](const BitmapView& room, const Rect& part) {
        CopyRows(room, Pixels().Part(part));
    });
}

CPackedDib CInPlaceStroke::TakeOriginal()
{
    CPackedDib original = m_image->Dib().Duplicate();
    if (original.IsEmpty())
        return original;
    CopyOldInto(ViewOf(original));
    original.TakeWrittenText(m_image->MutableDib());
    return original;
}

void CInPlaceStroke::Restore()
{
    CopyOldInto(Pixels());
}

void CInPlaceStroke::CopyOldInto(const BitmapView& picture) const
{
    if (HasPainted())
        CopyRows(picture.Part(m_old.Picture().Rectangle()), ViewOf(m_old.Picture().dib));
}
