// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/NativeRecords.h"

#include "fileio/PackedPixels.h"
#include "fileio/RowCoder.h"
#include "fileio/StreamTags.h"

#include <algorithm>

bool ReadNativeHeader(CByteReader& reader, CObjectCanvas& canvas, uint32_t& objectCount)
{
    uint32_t width = 0;
    uint32_t height = 0;
    if (!ReadTag(reader, kStreamTags) || !reader.ReadU32(canvas.parameter) ||
        !reader.ReadU32(canvas.backgroundIndex) || !reader.ReadU32(width) || !reader.ReadU32(height) ||
        !reader.Skip(2) || !reader.ReadU16(canvas.frameDelay) || !reader.ReadU8(canvas.transparentIndex) ||
        !reader.ReadU8(canvas.graphicControlByte) || !reader.ReadU8(canvas.imageDescriptorByte) ||
        !reader.Skip(1) || !reader.ReadU32(objectCount))
        return false;
    if (width > INT32_MAX || height > INT32_MAX ||
        uint64_t{width} * height > static_cast<uint64_t>(kMaxPicturePixels))
        return false;
    canvas.width = static_cast<int>(width);
    canvas.height = static_cast<int>(height);
    return true;
}

bool ReadNativeRecord(CByteReader& reader, NativeRecord& record)
{
    std::span<const uint8_t> name;
    if (!reader.ReadU32(record.width) || !reader.ReadU32(record.height) ||
        !reader.ReadBytes(kNativeNameBytes, name) || !reader.ReadI32(record.x) || !reader.ReadI32(record.y) ||
        !reader.ReadU8(record.visible) || !reader.ReadU8(record.locked) ||
        !reader.ReadU8(record.transparency) || !reader.Skip(1) || !reader.ReadU32(record.data.offset) ||
        !reader.ReadU32(record.data.length))
        return false;
    std::ranges::copy(name, record.name.begin());
    return true;
}

uint64_t SmallestNativePixels(const NativeRecord& record)
{
    if (uint64_t{record.width} * record.height > static_cast<uint64_t>(kMaxPicturePixels))
        return UINT64_MAX;
    return 4 * SmallestPackedRow(record.width) * record.height;
}

Ref<CPicObject> ReadNativeObject(CByteReader reader, const NativeRecord& record)
{
    if (!reader.Seek(record.data.offset))
        return nullptr;
    std::span<const uint8_t> packed = reader.Rest();
    CPackedDib dib = UnpackPixels(packed, record.width, record.height, 32);
    if (dib.IsEmpty())
        return nullptr;
    auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(std::move(dib), record.name.data()));
    object->x = record.x;
    object->y = record.y;
    object->visible = record.visible != 0;
    object->locked = record.locked != 0;
    object->transparency = record.transparency;
    return object;
}
