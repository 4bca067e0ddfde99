// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/NewDocument.h"

#include "document/Refusal.h"
#include "model/FillDib.h"
#include "platform/settings/Settings.h"

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
    FillDib(dib, static_cast<uint32_t>(settings.Get(Setting::InitColor)), alpha);

    auto object = MakeShared<CPicObject>(document.NewImage(std::move(dib)));
    object->visible = true;
    object->SetSelected(true);
    canvas.objects.Append(std::move(object));
    document.Adopt(std::move(canvas));
    return true;
}
