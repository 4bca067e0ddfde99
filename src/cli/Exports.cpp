// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Exports.h"

#include "platform/codec/PngWriter.h"

#include <algorithm>

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

bool ExportSelection(const CPixoluneView& view, const std::filesystem::path& path)
{
    const Size size = view.Document().Canvas().Size();
    CPackedDib mask = CPackedDib::Create(size.width, size.height, 8);
    if (mask.IsEmpty())
        return false;
    for (int y = 0; y < size.height; ++y) {
        VisitRow(view.Selection(), y, 0, size.width, [row = mask.Row(y)](int left, int right) {
            std::fill(row + left, row + right, uint8_t{255});
        });
    }
    const PngPicture picture{.top = mask.Row(0),
                             .stride = -static_cast<ptrdiff_t>(mask.Stride()),
                             .width = size.width,
                             .height = size.height,
                             .colour = PngColour::Grey};
    return WritePng(path, picture);
}
