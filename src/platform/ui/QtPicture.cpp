// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ui/QtPicture.h"

#include <cstring>

QColor ToQColor(int32_t colorRef)
{
    return {colorRef & 0xFF, colorRef >> 8 & 0xFF, colorRef >> 16 & 0xFF};
}

int32_t ToColorRef(const QColor& color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}

QImage ToQImage(const CPackedDib& dib)
{
    if (dib.IsEmpty() || dib.BitCount() != 32)
        return {};
    QImage image(dib.Width(), dib.Height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(image.scanLine(y), dib.Row(y), static_cast<size_t>(dib.Width()) * 4);
    return image;
}

CPackedDib ToDib(const QImage& image)
{
    const QImage source = image.convertToFormat(QImage::Format_ARGB32);
    if (source.isNull())
        return {};
    CPackedDib dib = CPackedDib::Create(source.width(), source.height(), 32);
    if (dib.IsEmpty())
        return {};
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(dib.Row(y), source.constScanLine(y), static_cast<size_t>(source.width()) * 4);
    return dib;
}

QImage WrapOpaque(const ConstBitmapView& view)
{
    return {view.top, view.width, view.height, static_cast<qsizetype>(view.stride), QImage::Format_RGB32};
}
