// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FormatTable.h"

#include "fileio/AnimatedCursorReader.h"
#include "fileio/AviImport.h"
#include "fileio/GifReader.h"
#include "fileio/IconReader.h"
#include "fileio/NativeFile.h"
#include "fileio/SinglePicture.h"
#include "platform/codec/Image.h"

#include <algorithm>
#include <ranges>

namespace {

/// A reader that needs nothing but a progress control.
template <bool (*Load)(CObjectCanvas&, const std::filesystem::path&, IProgress*)>
bool ReadObjects(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services)
{
    return Load(canvas, path, &services.ui);
}

bool ReadNative(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services)
{
    return LoadNativeFile(canvas, path, services.ui);
}

constexpr FormatRow kRows[] = {
    {"GIF animation", "GIF", ReadObjects<LoadGifFile>},
    {"Windows icon", "ICO", ReadObjects<LoadIconFile>},
    {"Windows cursor", "CUR", ReadObjects<LoadIconFile>},
    {"Windows animated cursor", "ANI", ReadObjects<LoadAnimatedCursorFile>},
    {"AVI video", "AVI", ReadObjects<LoadAviFile>},
    {"Pixolune document", "PXD", ReadNative},
    {"Windows bitmap", "BMP DIB", ReadSinglePicture<CImage::LoadBmpFile>},
    {"JPEG picture", "JPG JPEG", ReadSinglePicture<CImage::LoadJPGFile>},
    {"PC Paintbrush picture", "PCX", ReadSinglePicture<CImage::LoadPCXFile>},
    {"PNG picture", "PNG", ReadSinglePicture<CImage::LoadPNGFile>},
    {"Targa picture", "TGA", ReadSinglePicture<CImage::LoadTGAFile>},
    {"TIFF picture", "TIF TIFF", ReadSinglePicture<CImage::LoadTIFFFile>},
};

std::string UpperCased(std::string_view text)
{
    std::string upper(text);
    for (char& letter : upper) {
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    }
    return upper;
}

} // namespace

std::span<const FormatRow> FormatTable()
{
    return kRows;
}

const FormatRow* FindFormat(const std::filesystem::path& path)
{
    const std::string text = path.string();
    const size_t dot = text.rfind('.');
    if (dot == std::string::npos)
        return nullptr;
    const std::string extension = UpperCased(std::string_view(text).substr(dot + 1));
    const auto matches = [&](const FormatRow& row) {
        return std::ranges::any_of(row.extensions | std::views::split(' '),
                                   [&](const auto& part) { return std::ranges::equal(part, extension); });
    };
    const auto* row = std::ranges::find_if(kRows, matches);
    return row == std::end(kRows) ? nullptr : row;
}
