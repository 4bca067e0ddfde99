// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/ByteSink.h"
#include "platform/codec/PictureWriters.h"
#include "platform/codec/RowProgress.h"
#include "platform/codec/SaveOptions.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr uint8_t kColour = 2;
constexpr uint8_t kRunLengthColour = 10;
constexpr uint8_t kAlphaBits = 8;
constexpr uint8_t kTopDown = 0x20;
constexpr int kMaxSide = 0xffff;
constexpr int kMaxPacket = 128;

uint32_t PixelAt(const uint8_t* row, int x)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + ptrdiff_t{x} * 4, sizeof pixel);
    return pixel;
}

/// Packets of equal pixels and of different ones, none over the end of the row. `packed` has room for 5 bytes
/// a pixel. Returns the packets' end.
uint8_t* PackRow(const uint8_t* row, int width, uint8_t* packed)
{
    for (int x = 0; x < width;) {
        const int limit = std::min(width, x + kMaxPacket);
        int end = x + 1;
        while (end < limit && PixelAt(row, end) == PixelAt(row, x))
            ++end;
        const bool isRun = end - x > 1;
        if (!isRun) {
            while (end < limit && (end + 1 == width || PixelAt(row, end) != PixelAt(row, end + 1)))
                ++end;
        }
        const int count = end - x;
        *packed++ = static_cast<uint8_t>((isRun ? 0x80 : 0) | (count - 1));
        const size_t bytes = isRun ? 4u : static_cast<size_t>(count) * 4;
        std::memcpy(packed, row + ptrdiff_t{x} * 4, bytes);
        packed += bytes;
        x = end;
    }
    return packed;
}

} // namespace

bool PutTga(CAtomicFile& file, const CPackedDib& dib, uint32_t option, IProgress* progress)
{
    if (dib.BitCount() != 32 || dib.Width() > kMaxSide || dib.Height() > kMaxSide)
        return false;
    const TgaOptions options = TgaOptions::Of(option);
    CByteSink header;
    header.PutZeroes(2);
    header.PutU8(options.isRunLength ? kRunLengthColour : kColour);
    header.PutZeroes(9);
    header.PutU16(static_cast<uint16_t>(dib.Width()));
    header.PutU16(static_cast<uint16_t>(dib.Height()));
    header.PutU8(32);
    header.PutU8(kAlphaBits | (options.isBottomUp ? 0 : kTopDown));
    if (!file.Write(header.Bytes()))
        return false;

    CRowProgress steps(progress, dib.Height());
    std::vector<uint8_t> packed(static_cast<size_t>(dib.Width()) * 5);
    for (int done = 0; done < dib.Height(); ++done) {
        const uint8_t* row = dib.Row(options.isBottomUp ? dib.Height() - 1 - done : done);
        std::span<const uint8_t> bytes(row, dib.Stride());
        if (options.isRunLength) {
            const uint8_t* end = PackRow(row, dib.Width(), packed.data());
            bytes = {packed.data(), static_cast<size_t>(end - packed.data())};
        }
        if (!file.Write(bytes))
            return false;
        steps.SetDone(done + 1);
    }
    return true;
}
