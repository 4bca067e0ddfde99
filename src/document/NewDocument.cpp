// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/NewDocument.h"

#include "document/Refusal.h"
#include "platform/settings/Settings.h"

#include <algorithm>
#include <cstring>

namespace {

/// BGRA bytes of a 0x00bbggrr colour reference with an alpha.
uint32_t PixelOf(uint32_t colour, uint8_t alpha)
{
    const uint32_t red = colour & 0xFF;
    const uint32_t green = colour >> 8 & 0xFF;
    const uint32_t blue = colour >> 16 & 0xFF;
    return blue | green << 8 | red << 16 | uint32_t{alpha} << 24;
}

void Fill(CPackedDib& dib, uint32_t pixel)
{
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x)
            std::memcpy(row + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
    }
}

} // namespace

bool InitializeNewDocument(CPixoluneDoc& document)
{
    const CSettings& settings = document.Services().settings;
    CObjectCanvas canvas;
    canvas.width = settings.Get(Setting::NewImageWidth);
    canvas.height = settings.Get(Setting::NewImageHeight);
    CPackedDib dib = CPackedDib::CreateTransparent(canvas.width, canvas.height);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);
    const uint8_t alpha = settings.IsOn(Setting::InitTransparent) ? 0 : 255;
    Fill(dib, PixelOf(static_cast<uint32_t>(settings.Get(Setting::InitColor)), alpha));

    auto object = MakeShared<CPicObject>(document.NewImage(std::move(dib)));
    object->visible = true;
    object->SetSelected(true);
    canvas.objects.Append(std::move(object));
    document.Adopt(std::move(canvas));
    return true;
}
