// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/ByteSink.h"
#include "platform/codec/PictureWriters.h"
#include "platform/codec/RowProgress.h"

#include <algorithm>

namespace {

constexpr int kMaxSide = 0xffff;
constexpr uint16_t kDotsPerInch = 96;
constexpr size_t kMaxRun = 63;
constexpr uint8_t kRunMark = 0xc0;
constexpr uint8_t kPaletteMark = 12;
constexpr size_t kPaletteColours = 256;

std::vector<uint8_t> PlaneOf(const uint8_t* row, int width, size_t step, size_t planeBytes)
{
    std::vector<uint8_t> plane(planeBytes);
    for (size_t x = 0; x < static_cast<size_t>(width); ++x)
        plane[x] = row[x * step];
    return plane;
}

/// Runs of up to 63 equal bytes; a single byte with both high bits set needs a run of its own.
void PutRuns(std::span<const uint8_t> bytes, CByteSink& sink)
{
    for (size_t at = 0; at < bytes.size();) {
        size_t count = 1;
        while (count < kMaxRun && at + count < bytes.size() && bytes[at + count] == bytes[at])
            ++count;
        if (count > 1 || bytes[at] >= kRunMark)
            sink.PutU8(static_cast<uint8_t>(kRunMark | count));
        sink.PutU8(bytes[at]);
        at += count;
    }
}

void PutHeader(const CPackedDib& dib, uint8_t planes, size_t planeBytes, CByteSink& sink)
{
    constexpr uint8_t kManufacturer = 10;
    constexpr uint8_t kVersion = 5;
    constexpr uint8_t kRunLength = 1;
    constexpr uint8_t kBits = 8;
    constexpr uint16_t kColourPalette = 1;
    for (const uint8_t field : {kManufacturer, kVersion, kRunLength, kBits})
        sink.PutU8(field);
    const auto right = static_cast<uint16_t>(dib.Width() - 1);
    const auto bottom = static_cast<uint16_t>(dib.Height() - 1);
    for (const uint16_t field : {uint16_t{0}, uint16_t{0}, right, bottom, kDotsPerInch, kDotsPerInch})
        sink.PutU16(field);
    sink.PutZeroes(49);
    sink.PutU8(planes);
    sink.PutU16(static_cast<uint16_t>(planeBytes));
    sink.PutU16(kColourPalette);
    sink.PutZeroes(58);
}

} // namespace

/// Planes of red, green and blue, or one plane of 8 bits with its palette at the end.
bool PutPcx(CAtomicFile& file, const CPackedDib& dib, uint32_t, IProgress* progress)
{
    const bool isIndexed = dib.BitCount() == 8;
    // A plane's row has an even number of bytes, and that number must fit.
    const size_t planeBytes = (static_cast<size_t>(dib.Width()) + 1) / 2 * 2;
    if ((!isIndexed && dib.BitCount() != 32) || planeBytes > kMaxSide || dib.Height() > kMaxSide)
        return false;
    CByteSink sink;
    PutHeader(dib, isIndexed ? 1 : 3, planeBytes, sink);
    CRowProgress steps(progress, dib.Height());
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* row = dib.Row(y);
        if (isIndexed) {
            PutRuns(PlaneOf(row, dib.Width(), 1, planeBytes), sink);
        } else {
            for (const size_t channel : {2, 1, 0})
                PutRuns(PlaneOf(row + channel, dib.Width(), 4, planeBytes), sink);
        }
        if (!file.Write(sink.Bytes()))
            return false;
        sink.Clear();
        steps.SetDone(y + 1);
    }
    if (!isIndexed)
        return true;
    sink.PutU8(kPaletteMark);
    const std::span<const RgbQuad> colours = dib.ColourTable();
    for (size_t index = 0; index < kPaletteColours; ++index) {
        const RgbQuad colour = index < colours.size() ? colours[index] : RgbQuad{};
        for (const uint8_t level : {colour.red, colour.green, colour.blue})
            sink.PutU8(level);
    }
    return file.Write(sink.Bytes());
}
