// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/SaveAs.h"

#include "document/Refusal.h"
#include "fileio/AnimatedCursorWriter.h"
#include "fileio/FlattenedFrame.h"
#include "fileio/GifSave.h"
#include "fileio/IconWriter.h"
#include "fileio/PathExtension.h"
#include "fileio/PsdWriter.h"
#include "fileio/StatusText.h"
#include "model/Compositing.h"
#include "platform/codec/SaveImage.h"
#include "platform/codec/SaveOptions.h"
#include "platform/settings/Settings.h"

#include <algorithm>

namespace {

using Path = std::filesystem::path;

uint32_t FillColor(const AppServices& services)
{
    return static_cast<uint32_t>(services.settings.Get(Setting::DefaultBackgroundColor));
}

bool WriteLibrary(const CPackedDib& dib, const Path& path, uint32_t option, AppServices& services)
{
    return !dib.IsEmpty() && CImage::SaveImageFile(path, dib, option, &services.ui);
}

bool WriteJpg(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    const JpgOptions options{services.settings.Get(Setting::JPGQuality)};
    return WriteLibrary(FlattenOver(canvas, FillColor(services)), path, options.Value(), services);
}

bool WriteGif(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    return SaveGifFile(canvas, path, services.settings.IsOn(Setting::Interlace), &services.ui);
}

bool WriteBmp(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions& options,
              AppServices& services)
{
    constexpr uint32_t kBmpOption = 85;
    const CPackedDib frame = FlattenOver(canvas, FillColor(services));
    if (frame.IsEmpty())
        return false;
    return WriteLibrary(ConvertDIBFormat(frame, options.bmpColors), path, kBmpOption, services);
}

bool WritePsd(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    return SavePsdFile(canvas, path, &services.ui);
}

bool WritePng(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    const uint32_t colour = FillColor(services);
    const PngOptions options{RgbQuad{static_cast<uint8_t>(colour >> 16), static_cast<uint8_t>(colour >> 8),
                                     static_cast<uint8_t>(colour), 0}};
    return WriteLibrary(Flatten(canvas), path, options.Value(), services);
}

bool WriteTiff(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    using enum TiffCompression;
    const TiffOptions options =
        TiffOptions::Of(static_cast<uint32_t>(services.settings.Get(Setting::TIFFEncodeMode)));
    const bool isFax = options.compression == Group3 || options.compression == Group4;
    if (!isFax && options.compression != Jpeg)
        return WriteLibrary(Flatten(canvas), path, options.Value(), services);
    CPackedDib frame = FlattenOver(canvas, FillColor(services));
    if (isFax && !frame.IsEmpty())
        frame = ConvertDIBFormat(frame, DibFormat::BlackAndWhite);
    return WriteLibrary(frame, path, options.Value(), services);
}

bool WriteTga(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    const TgaOptions options{services.settings.IsOn(Setting::TGAEncodingRLE),
                             services.settings.IsOn(Setting::BottomUpOrientation)};
    return WriteLibrary(Flatten(canvas), path, options.Value(), services);
}

bool WritePcx(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    return WriteLibrary(FlattenOver(canvas, FillColor(services)), path, 0, services);
}

bool WriteIco(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions&, AppServices& services)
{
    return SaveIconFile(canvas, path, IconKind::Icon, {}, &services.ui);
}

bool WriteCur(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions& options,
              AppServices& services)
{
    return SaveIconFile(canvas, path, IconKind::Cursor, options.hotSpot, &services.ui);
}

bool WriteAni(const CObjectCanvas& canvas, const Path& path, const SaveAsOptions& options,
              AppServices& services)
{
    return SaveAnimatedCursorFile(canvas, path, options.hotSpot, &services.ui);
}

// "an" before every name, the PCX prompt that names TIFF, and "*tiff" without its dot have always been so.
constexpr SaveFormatRow kRows[] = {
    {"&JPG File...", "Save as an JPG file", "Save As An JPG File", ".jpg",
     "JPG (JPEG File Interchange Format)|*.jpg;*.jpeg||", "JPG JPEG", SavePanel::Jpg, WriteJpg},
    {"&GIF File...", "Save as an GIF file", "Save As An GIF File", ".gif",
     "GIF (Graphics Interchange Format)|*.gif||", "GIF", SavePanel::Gif, WriteGif},
    {"&BMP File...", "Save as an BMP file", "Save As An BMP File", ".bmp",
     "BMP (Windows Bitmap)|*.bmp;*.dib||", "BMP DIB", SavePanel::Bmp, WriteBmp},
    {"P&SD File...", "Save as an PSD file", "Save As An PSD File", ".psd",
     "PSD (Photoshop File Format)|*.psd||", "PSD", SavePanel::None, WritePsd},
    {"&PNG File...", "Save as an PNG file", "Save As An PNG File", ".png",
     "PNG (Portable Network Graphics)|*.png||", "PNG", SavePanel::FillColor, WritePng},
    {"&TIFF File...", "Save as an TIFF file", "Save As An TIFF File", ".tif",
     "TIFF (Tag Image File Format)|*.tif;*tiff||", "TIF TIFF", SavePanel::Tiff, WriteTiff},
    {"T&GA File...", "Save as an TGA file", "Save As An TGA File", ".tga",
     "TGA Files (Targa File Format)|*.tga||", "TGA", SavePanel::Tga, WriteTga},
    {"PC&X File...", "Save as an TIFF file", "Save As An PCX File", ".pcx", "PCX (PC Paintbrush)|*.pcx||",
     "PCX", SavePanel::FillColor, WritePcx},
    {"&ICO File...", "Save as an ICO file", "Save As An ICO File", ".ico", "ICO (Windows Icons)|*.ico||",
     "ICO", SavePanel::None, WriteIco},
    {"&CUR File...", "Save as an CUR file", "Save As An CUR File", ".cur", "CUR (Windows Cursors)|*.cur||",
     "CUR", SavePanel::HotSpot, WriteCur},
    {"&ANI File...", "Save as an ANI file", "Save As An ANI File", ".ani",
     "ANI (Windows Animator Cursors)|*.ani||", "ANI", SavePanel::HotSpot, WriteAni},
};

} // namespace

std::span<const SaveFormatRow> SaveFormatTable()
{
    return kRows;
}

const SaveFormatRow* FindSaveFormat(const Path& path)
{
    const std::string extension = UpperCasedExtension(path);
    const auto* row = std::ranges::find_if(kRows, [&](const SaveFormatRow& candidate) {
        return NamesExtension(candidate.extensions, extension);
    });
    return row == std::end(kRows) ? nullptr : row;
}

bool SaveDocumentAs(const CPixoluneDoc& document, const Path& path, const SaveFormatRow& format,
                    const SaveAsOptions& options)
{
    AppServices& services = document.Services();
    const CFileStatus status(services.ui, Str::SavingFile, path);
    const SaveFormatRow* byExtension = FindSaveFormat(path);
    const SaveFormatRow& chosen = byExtension != nullptr ? *byExtension : format;
    return chosen.write(document.Canvas(), path, options, services) ||
           RefuseFile(document, Str::SaveFileFailed, path);
}
