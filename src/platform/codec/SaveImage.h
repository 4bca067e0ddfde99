// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <filesystem>

namespace CImage {

/// Writes a picture in the format of the path's extension, in any case: JPG, JPEG, PNG, TIF, TIFF, TGA, PCX
/// take 32 bits per pixel; BMP and DIB any depth; PCX also 8 bits, TIF and TIFF with fax compression also 1
/// bit. Alpha is kept by PNG, TGA, and TIFF without compression, with LZW and with Deflate; the others drop
/// it, so the caller fills transparent areas first. The option value is that of SaveOptions.h. The file is
/// replaced as a whole; false, and the old file as it was, on any failure.
[[nodiscard]] bool SaveImageFile(const std::filesystem::path& path, const CPackedDib& dib, uint32_t option,
                                 IProgress* progress);

} // namespace CImage
