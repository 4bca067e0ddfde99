// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/JoinPictures.h"

#include "canvas/FillBrush.h"
#include "model/DibOperations.h"

#include <cstring>

PlacedPicture JoinPictures(const CPackedDib& lower, Point lowerPosition, const PlacedPicture& upper,
                           JoinRule rule)
{
    const Rect old = Rect::At(lowerPosition, lower.Size());
    const Rect both = old.United(upper.Rectangle());
    PlacedPicture joined{CPackedDib::CreateTransparent(both.Width(), both.Height()), both.Corner()};
    if (joined.dib.IsEmpty())
        return joined;
    const BitmapView view = ViewOf(joined.dib);
    for (int y = 0; y < lower.Height(); ++y) {
        std::memcpy(view.Row(y + old.top - both.top) + ptrdiff_t{old.left - both.left} * 4, lower.Row(y),
                    static_cast<size_t>(lower.Width()) * 4);
    }
    JoinInto(view, joined.position, upper, rule);
    return joined;
}

void JoinInto(const BitmapView& lower, Point lowerPosition, const PlacedPicture& upper, JoinRule rule)
{
    const ConstBitmapView above = ViewOf(upper.dib);
    const Point offset{upper.position.x - lowerPosition.x, upper.position.y - lowerPosition.y};
    for (int y = 0; y < above.height; ++y) {
        const uint8_t* from = above.Row(y);
        uint8_t* to = lower.Row(y + offset.y) + ptrdiff_t{offset.x} * 4;
        for (int x = 0; x < above.width; ++x, from += 4, to += 4) {
            if (from[3] == 0)
                continue;
            if (from[3] == 255 || rule == JoinRule::Replace) {
                std::memcpy(to, from, 4);
                continue;
            }
            uint32_t pixels[2];
            std::memcpy(&pixels[0], to, 4);
            std::memcpy(&pixels[1], from, 4);
            pixels[0] = Over(pixels[0], pixels[1]);
            std::memcpy(to, &pixels[0], 4);
        }
    }
}

std::optional<PlacedPicture> Trimmed(const PlacedPicture& picture)
{
    const Rect bounds = picture.dib.IsEmpty() ? Rect() : OpaqueBounds(picture.dib);
    if (bounds.IsEmpty())
        return PlacedPicture();
    CPackedDib part = CropByMargins(picture.dib, bounds.left, bounds.top, picture.dib.Width() - bounds.right,
                                    picture.dib.Height() - bounds.bottom);
    if (part.IsEmpty())
        return std::nullopt;
    return PlacedPicture{std::move(part),
                         {picture.position.x + bounds.left, picture.position.y + bounds.top}};
}
