// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Exports.h"

#include "platform/codec/PngWriter.h"

namespace {

bool WriteDib(const std::filesystem::path& path, const CPackedDib& dib, PngColour colour)
{
    return !dib.IsEmpty() && WritePng(path, PngPictureOf(ViewOf(dib), colour));
}

} // namespace

bool ExportFrame(const CPixoluneView& view, const std::filesystem::path& path)
{
    return WriteDib(path, Flatten(view.Document().Canvas()), PngColour::Rgba);
}

bool ExportPicture(const CPicObject& object, const std::filesystem::path& path)
{
    return object.image && WriteDib(path, object.image->Dib(), PngColour::Rgba);
}

bool ExportView(const CPixoluneView& view, const std::filesystem::path& path)
{
    const Size client = view.Geometry().client;
    CPackedDib shown = CPackedDib::Create(client.width, client.height, 32);
    if (shown.IsEmpty())
        return false;
    view.Paint(ViewOf(shown), Rect::At({0, 0}, client));
    return WriteDib(path, shown, PngColour::Rgb);
}
