// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/NegativeDib.h"

#include "platform/parallel/RowBands.h"

namespace {

constexpr uint32_t kColourBits = 0x00FFFFFF;
constexpr int kPixelsPerMicrosecond = 2000;

} // namespace

CPackedDib NegativeDib(const CPackedDib& dib)
{
    if (dib.IsEmpty())
        return {};
    CPackedDib negative = CPackedDib::CreateForOverwrite(dib.Width(), dib.Height());
    if (negative.IsEmpty())
        return {};
    ForRowBands(dib.Height(), BandRows(dib.Width(), kPixelsPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            const auto* source = reinterpret_cast<const uint32_t*>(dib.Row(y));
            auto* inverted = reinterpret_cast<uint32_t*>(negative.Row(y));
            for (int x = 0; x < dib.Width(); ++x)
                inverted[x] = source[x] ^ kColourBits;
        }
    });
    return negative;
}
