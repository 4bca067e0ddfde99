// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <QColor>
#include <QImage>

#include <cstdint>

/// A setting's colour, 0x00bbggrr.
[[nodiscard]] QColor ToQColor(int32_t colorRef);
[[nodiscard]] int32_t ToColorRef(const QColor& color);

/// A copy of a 32-bit picture with straight alpha; null when memory runs out.
[[nodiscard]] QImage ToQImage(const CPackedDib& dib);
/// A copy of any picture as 32 bits per pixel; empty when memory runs out.
[[nodiscard]] CPackedDib ToDib(const QImage& image);
/// Pixels that stay where they are, opaque; the view must outlive the image.
[[nodiscard]] QImage WrapOpaque(const ConstBitmapView& view);
