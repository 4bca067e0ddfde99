// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"
#include "platform/transform/ColorReduction.h"

#include <filesystem>
#include <span>
#include <string_view>

/// The options of one save that are not settings.
struct SaveAsOptions {
    DibFormat bmpColors = DibFormat::TrueColors;
    Point hotSpot; ///< of cursors
};

/// What the Save dialog of a format shows below its file controls.
enum class SavePanel { None, Jpg, Gif, Bmp, FillColor, Tiff, Tga, HotSpot };

/// One row a Save As command, in menu order.
struct SaveFormatRow {
    std::string_view menuText;
    std::string_view prompt;
    std::string_view tip;
    std::string_view extension;  ///< ".jpg"
    std::string_view filter;     ///< "name|patterns||"
    std::string_view extensions; ///< upper case, that a path may have
    SavePanel panel;
    bool (*write)(const CObjectCanvas& canvas, const std::filesystem::path& path,
                  const SaveAsOptions& options, AppServices& services);
};

[[nodiscard]] std::span<const SaveFormatRow> SaveFormatTable();
/// The row whose writer a path's extension chooses; none for an unknown one.
[[nodiscard]] const SaveFormatRow* FindSaveFormat(const std::filesystem::path& path);

/// Writes the document's picture. The path's extension chooses the writer among those of the table; a path
/// with another one is written by `format`. The document stays as it is; false, with a message, when writing
/// fails, and the old file is then whole.
bool SaveDocumentAs(const CPixoluneDoc& document, const std::filesystem::path& path,
                    const SaveFormatRow& format, const SaveAsOptions& options);
