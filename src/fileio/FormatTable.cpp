// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FormatTable.h"

#include "fileio/AnimatedCursorReader.h"
#include "fileio/AnimationPreviews.h"
#include "fileio/AviImport.h"
#include "fileio/GifReader.h"
#include "fileio/IconReader.h"
#include "fileio/NativeFile.h"
#include "fileio/PathExtension.h"
#include "fileio/PsdReader.h"
#include "fileio/SinglePicture.h"
#include "platform/codec/Image.h"

#include <algorithm>

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
    {"GIF animation", "GIF", ReadObjects<LoadGifFile>, FileContents::Frames, PreviewGifFile},
    {"Windows icon", "ICO", ReadObjects<LoadIconFile>, FileContents::Images},
    {"Windows cursor", "CUR", ReadObjects<LoadIconFile>, FileContents::Images},
    {"Windows animated cursor", "ANI", ReadObjects<LoadAnimatedCursorFile>, FileContents::Frames},
    {"AVI video", "AVI", ReadObjects<LoadAviFile>, FileContents::Frames, PreviewAviFile, false, true},
    {"Pixolune document", "PXD", ReadNative, FileContents::Objects, nullptr, true},
    {"Layered picture", "PSD", LoadPsdFile, FileContents::Objects, PreviewPsdFile},
    {"Windows bitmap", "BMP DIB", ReadSinglePicture<CImage::LoadBmpFile>},
    {"JPEG picture", "JPG JPEG", ReadSinglePicture<CImage::LoadJPGFile>},
    {"PC Paintbrush picture", "PCX", ReadSinglePicture<CImage::LoadPCXFile>},
    {"PNG picture", "PNG", ReadSinglePicture<CImage::LoadPNGFile>},
    {"Targa picture", "TGA", ReadSinglePicture<CImage::LoadTGAFile>},
    {"TIFF picture", "TIF TIFF", ReadSinglePicture<CImage::LoadTIFFFile>},
};

} // namespace

std::span<const FormatRow> FormatTable()
{
    return kRows;
}

const FormatRow* FindFormat(const std::filesystem::path& path)
{
    const std::string extension = UpperCasedExtension(path);
    const auto* row = std::ranges::find_if(
        kRows, [&](const FormatRow& candidate) { return NamesExtension(candidate.extensions, extension); });
    return row == std::end(kRows) ? nullptr : row;
}
