// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ObjectStacks.h"

#include "imageops/MirrorDib.h"
#include "model/DibOperations.h"
#include "support/Inputs.h"

namespace {

constexpr int kSizeInMegapixels = 12;
constexpr uint8_t kVeil = 25;

CPackedDib Turned(const CPackedDib& picture, int index)
{
    CPackedDib turned = index % 2 == 0 ? picture.Duplicate() : MirrorHorizontally(picture);
    return index % 4 >= 2 ? MirrorVertically(turned) : std::move(turned);
}

CPackedDib PictureOf(Stack stack, int index)
{
    if (stack == Stack::Photos)
        return Turned(PhotoPicture(kSizeInMegapixels), index);
    if (stack == Stack::Art)
        return Turned(index == 0 ? BackdropPicture(kSizeInMegapixels) : FlatArtPicture(kSizeInMegapixels),
                      index);
    CPackedDib veil = Turned(BackdropPicture(kSizeInMegapixels), index);
    SetAlphaInRect(veil, Rect::At({0, 0}, veil.Size()), kVeil);
    return veil;
}

} // namespace

const char* StackName(Stack stack)
{
    return stack == Stack::Art ? "50x12MP-art" : stack == Stack::Photos ? "50x12MP-photos" : "50x12MP-veils";
}

CObjectCanvas MakeStack(Stack stack)
{
    CObjectCanvas canvas;
    canvas.width = BackdropPicture(kSizeInMegapixels).Width();
    canvas.height = BackdropPicture(kSizeInMegapixels).Height();
    for (int i = 0; i < kStackObjects; ++i) {
        auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(PictureOf(stack, i), "layer"));
        object->visible = true;
        object->x = i * 37 % 301 - 150;
        object->y = i * 53 % 307 - 150;
        canvas.objects.Append(std::move(object));
    }
    canvas.objects.At(kStackObjects - 1)->SetSelected(true);
    return canvas;
}
