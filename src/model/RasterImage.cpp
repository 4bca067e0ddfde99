// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/RasterImage.h"

#include <atomic>
#include <cstring>

uint32_t CRasterImage::PixelAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= Width() || y >= Height())
        return 0;
    uint32_t pixel = 0;
    std::memcpy(&pixel, m_dib.Row(y) + static_cast<size_t>(x) * 4, sizeof pixel);
    return pixel;
}

uint64_t CRasterImage::NewContentId()
{
    static std::atomic<uint64_t> last = 0;
    return ++last;
}
