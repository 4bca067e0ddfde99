// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifSave.h"

#include "fileio/GifWriter.h"
#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"
#include "platform/transform/ColorReduction.h"

#include <cstring>

namespace {

constexpr int kMaxSide = 65535;
constexpr int kMostColours = 256;
constexpr uint8_t kLowestOpaqueAlpha = 128;

/// A bit for each pixel whose alpha is below 128; empty when there is none or memory runs out. What these
/// pixels hide is blanked with the first opaque colour, so that it takes no palette entry.
CPackedDib TakeTransparency(CPackedDib& frame, bool& outOfMemory)
{
    uint32_t cover = 0;
    bool isTransparent = false;
    for (int y = 0; y < frame.Height(); ++y) {
        for (int x = 0; x < frame.Width(); ++x) {
            const uint8_t* pixel = frame.Row(y) + ptrdiff_t{x} * 4;
            if (pixel[3] < kLowestOpaqueAlpha)
                isTransparent = true;
            else if (cover == 0)
                std::memcpy(&cover, pixel, sizeof cover);
        }
    }
    if (!isTransparent)
        return {};
    CPackedDib mask = CPackedDib::Create(frame.Width(), frame.Height(), 1);
    outOfMemory = mask.IsEmpty();
    for (int y = 0; y < frame.Height() && !outOfMemory; ++y) {
        uint8_t* bits = mask.Row(y);
        for (int x = 0; x < frame.Width(); ++x) {
            uint8_t* pixel = frame.Row(y) + ptrdiff_t{x} * 4;
            if (pixel[3] >= kLowestOpaqueAlpha)
                continue;
            bits[x / 8] = static_cast<uint8_t>(bits[x / 8] | 0x80 >> x % 8);
            std::memcpy(pixel, &cover, sizeof cover);
        }
    }
    return mask;
}

int BitsFor(size_t colours)
{
    return colours <= 2 ? 1 : colours <= 16 ? 4 : 8;
}

/// The smallest palette picture that holds the frame's colours.
CPackedDib PalettePicture(const CPackedDib& frame, int mostColours)
{
    CPackedDib picture = ReduceColorQuantity(frame, 8, mostColours, nullptr);
    if (picture.IsEmpty())
        return picture;
    const size_t colours = picture.ColourTable().size();
    const int bits = BitsFor(colours);
    return bits == 8 ? std::move(picture) : ReduceColorQuantity(frame, bits, 1 << bits, nullptr);
}

} // namespace

bool SaveGifFile(const CObjectCanvas& canvas, const std::filesystem::path& path, bool isInterlaced,
                 IProgress* progress)
{
    if (canvas.width > kMaxSide || canvas.height > kMaxSide)
        return false;
    CPackedDib frame = Flatten(canvas);
    bool outOfMemory = frame.IsEmpty();
    const CPackedDib mask = outOfMemory ? CPackedDib() : TakeTransparency(frame, outOfMemory);
    if (outOfMemory)
        return false;
    CPackedDib picture = PalettePicture(frame, kMostColours);
    if (picture.IsEmpty())
        return false;

    GifFrameOptions options;
    options.isInterlaced = isInterlaced;
    options.tableSize = GifTableSize(static_cast<uint32_t>(picture.ColourTable().size()));
    if (!mask.IsEmpty()) {
        options.isTransparent = true;
        if (const auto free = FindTransparentIndex(picture, mask, 0, options.tableSize)) {
            options.transparentIndex = *free;
        } else if (picture.ColourTable().size() == kMostColours) {
            picture = ReduceColorQuantity(frame, 8, kMostColours - 1, nullptr);
            if (picture.IsEmpty())
                return false;
            options.transparentIndex = kMostColours - 1;
        } else {
            const auto colours = static_cast<uint32_t>(picture.ColourTable().size());
            options.transparentIndex = static_cast<uint8_t>(colours);
            options.tableSize = GifTableSize(colours + 1);
        }
    }
    CGifWriter writer;
    writer.WriteHeader(canvas.Size(), picture.ColourTable(), options.tableSize, picture.BitCount(), 0);
    writer.WriteFrame(picture, mask, options, progress);
    writer.WriteTrailer();
    return WriteFileAtomically(path, writer.Bytes());
}
