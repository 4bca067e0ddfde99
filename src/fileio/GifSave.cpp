// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifSave.h"

#include "fileio/GifTransparency.h"
#include "fileio/GifWriter.h"
#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"
#include "platform/transform/ColorReduction.h"

namespace {

constexpr int kMaxSide = 65535;
constexpr int kMostColours = 256;

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
