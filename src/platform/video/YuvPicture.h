// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// Rows of chroma samples in a picture of luma and chroma planes.
enum class ChromaRows {
    Every,  ///< one for each row of luma
    Halved, ///< one for two rows of luma, between both
};

/// What the values of the samples stand for.
enum class SampleRange {
    Video, ///< black 16, white 235; chroma 16 to 240
    Full,  ///< 0 to 255
};

/// A frame of 8-bit samples: a plane of luma and two of chroma (blue less luma, red less luma), whose samples
/// stand in the middle of pairs of pixels of a row; at an odd width the last one belongs to one pixel.
struct YuvPicture {
    Size size; ///< in pixels, each side at least 1
    std::array<const uint8_t*, 3> planes{};
    std::array<ptrdiff_t, 3> strides{}; ///< bytes from one row to the next one below; negative bottom-up
    ChromaRows chromaRows = ChromaRows::Halved;
    SampleRange range = SampleRange::Video;
};

/// The same as 32 bits per pixel, opaque, with the weights of ITU-R BT.601. The chroma of a pixel is the mean
/// of the samples around it, the nearer one weighing three times as much in either direction. Each byte is
/// within 1 of what real numbers give. Empty when memory runs out.
[[nodiscard]] CPackedDib DibFromYuv(const YuvPicture& picture);
