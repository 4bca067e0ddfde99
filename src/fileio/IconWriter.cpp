// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/IconWriter.h"

#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"

#include <vector>

namespace {

constexpr uint32_t kDirectoryBytes = 22;
constexpr int kBitCount = 32;
constexpr uint8_t kLowestOpaqueAlpha = 128;

/// A side in a directory entry, which has one byte for it; 0 stands for 256 and more.
uint8_t EntrySide(int side)
{
    return static_cast<uint8_t>(side < 256 ? side : 0);
}

uint64_t PixelBytes(Size size, int bitCount)
{
    return static_cast<uint64_t>(DibStride(size.width, bitCount)) * static_cast<uint64_t>(size.height);
}

void WriteMask(CByteWriter& writer, const CPackedDib& picture)
{
    std::vector<uint8_t> row(static_cast<size_t>(DibStride(picture.Width(), 1)));
    for (int y = picture.Height() - 1; y >= 0; --y) {
        std::ranges::fill(row, uint8_t{0});
        const uint8_t* pixels = picture.Row(y);
        for (size_t x = 0; x < static_cast<size_t>(picture.Width()); ++x) {
            if (pixels[x * 4 + 3] < kLowestOpaqueAlpha)
                row[x / 8] = static_cast<uint8_t>(row[x / 8] | 0x80 >> x % 8);
        }
        writer.Bytes(row);
    }
}

} // namespace

uint64_t IconFileBytes(Size size)
{
    return kDirectoryBytes + sizeof(DibHeader) + PixelBytes(size, kBitCount) + PixelBytes(size, 1);
}

void WriteIcon(CByteWriter& writer, const CPackedDib& picture, IconKind kind, Point hotSpot)
{
    const bool isCursor = kind == IconKind::Cursor;
    writer.U16(0);
    writer.U16(static_cast<uint16_t>(kind));
    writer.U16(1);
    writer.U8(EntrySide(picture.Width()));
    writer.U8(EntrySide(picture.Height()));
    writer.U8(0); // colours of a palette
    writer.U8(0);
    writer.U16(static_cast<uint16_t>(isCursor ? hotSpot.x : 1)); // planes of an icon
    writer.U16(static_cast<uint16_t>(isCursor ? hotSpot.y : kBitCount));
    writer.U32(static_cast<uint32_t>(IconFileBytes(picture.Size()) - kDirectoryBytes));
    writer.U32(kDirectoryBytes);

    writer.U32(sizeof(DibHeader));
    writer.I32(picture.Width());
    writer.I32(picture.Height() * 2); // pixels and mask
    writer.U16(1);
    writer.U16(kBitCount);
    writer.Zeroes(6 * sizeof(uint32_t));
    writer.Bytes(picture.Bits());
    WriteMask(writer, picture);
}

bool SaveIconFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IconKind kind,
                  Point hotSpot, IProgress* progress)
{
    const CPackedDib picture = Flatten(canvas);
    if (picture.IsEmpty() || picture.Bits().empty())
        return false;
    if (progress != nullptr)
        progress->SetPosition(50);
    CByteWriter writer;
    WriteIcon(writer, picture, kind, hotSpot);
    if (!WriteFileAtomically(path, writer.Collected()))
        return false;
    if (progress != nullptr)
        progress->SetPosition(100);
    return true;
}
