// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/memory/HeapBlock.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <filesystem>
#include <optional>

/// What a PNG file stores of each pixel, 8 bits a channel. The values are the channels' number.
enum class PngColour { Grey = 1, Rgb = 3, Rgba = 4 };

/// A picture to be written. Grey pixels are one byte each; Rgb and Rgba are taken from 32-bit pixels in the
/// order blue, green, red, alpha. Alpha is straight, and colour bytes are kept as they are also where alpha
/// is 0.
struct PngPicture {
    const uint8_t* top = nullptr; ///< first byte of the top row
    ptrdiff_t stride = 0;         ///< bytes from one row to the one below it
    int width = 0;
    int height = 0;
    PngColour colour = PngColour::Rgba;
    /// Written as the background colour of the picture (bKGD); not for Grey.
    std::optional<RgbQuad> background = std::nullopt;
};

[[nodiscard]] PngPicture PngPictureOf(const ConstBitmapView& view, PngColour colour = PngColour::Rgba);

/// The bytes of a PNG file. Each row gets the filter with the smallest sum of absolute differences (PNG,
/// third edition, section 12.7); bands of rows are filtered and compressed on all cores. Empty when the
/// picture has no pixels or memory runs out.
[[nodiscard]] CHeapBlock EncodePng(const PngPicture& picture, IProgress* progress = nullptr);

/// The same into a file, which is replaced as a whole; false when that fails.
[[nodiscard]] bool WritePng(const std::filesystem::path& path, const PngPicture& picture,
                            IProgress* progress = nullptr);
