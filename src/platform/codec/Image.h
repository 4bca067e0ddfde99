// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <filesystem>
#include <span>

/// The codec seam: readers of single-picture files. Each takes a path and a progress control (or none) and
/// returns a packed DIB of 1 to 32 bits per pixel, or an empty one when the file cannot be loaded. Alpha in
/// the file becomes the fourth byte of a 32-bit result. What a library can recover of a truncated file is
/// returned. Nothing is thrown; sizes are checked before memory is asked for.
namespace CImage {

[[nodiscard]] CPackedDib LoadBmpFile(const std::filesystem::path& path, IProgress* progress);
[[nodiscard]] CPackedDib LoadJPGFile(const std::filesystem::path& path, IProgress* progress);
[[nodiscard]] CPackedDib LoadPCXFile(const std::filesystem::path& path, IProgress* progress);
[[nodiscard]] CPackedDib LoadPNGFile(const std::filesystem::path& path, IProgress* progress);
[[nodiscard]] CPackedDib LoadTGAFile(const std::filesystem::path& path, IProgress* progress);
[[nodiscard]] CPackedDib LoadTIFFFile(const std::filesystem::path& path, IProgress* progress);

/// The bytes of a PNG file, as they also stand in other files.
[[nodiscard]] CPackedDib DecodePng(std::span<const uint8_t> file, IProgress* progress);

} // namespace CImage
