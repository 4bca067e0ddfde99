// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/NegativeDib.h"

#include "platform/parallel/PictureBands.h"

namespace {

constexpr uint32_t kColourBits = 0x00FFFFFF;
constexpr int kPixelsPerMicrosecond = 2000;

} // namespace

CPackedDib NegativeDib(const CPackedDib& dib)
{
    return MapPictureRows(dib, kPixelsPerMicrosecond,
                          [](const uint32_t* source, uint32_t* negative, size_t pixels) {
                              for (size_t x = 0; x < pixels; ++x)
                                  negative[x] = source[x] ^ kColourBits;
                          });
}
