// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <QImage>

#include <opencv2/core.hpp>
#include <pixman.h>

#include <memory>

/// The rows of a picture in the peers' own types, nothing copied. Rows stand in memory as they are stored,
/// the bottom one first: for the peers the picture is upside down, which costs them nothing.

inline QImage QtImageOf(const CPackedDib& dib, QImage::Format format)
{
    return {dib.Bits().data(), dib.Width(), dib.Height(), static_cast<int>(dib.Stride()), format};
}

/// One that Qt may draw on.
inline QImage QtImageOf(CPackedDib& dib, QImage::Format format)
{
    return {dib.Bits().data(), dib.Width(), dib.Height(), static_cast<int>(dib.Stride()), format};
}

inline cv::Mat MatOf(const CPackedDib& dib)
{
    return {dib.Height(), dib.Width(), dib.BitCount() == 8 ? CV_8UC1 : CV_8UC4,
            const_cast<uint8_t*>(dib.Bits().data()), dib.Stride()};
}

using PixmanImage = std::unique_ptr<pixman_image_t, int (*)(pixman_image_t*)>;

inline PixmanImage PixmanImageOf(const CPackedDib& dib, pixman_format_code_t format)
{
    auto* bits = reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(dib.Bits().data()));
    return {pixman_image_create_bits_no_clear(format, dib.Width(), dib.Height(), bits,
                                              static_cast<int>(dib.Stride())),
            pixman_image_unref};
}
