// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/DocumentRecords.h"

#include <vector>

namespace {

bool ReadFlag(CByteReader& reader, bool& flag)
{
    uint8_t value = 0;
    if (!reader.ReadU8(value) || value > 1)
        return false;
    flag = value != 0;
    return true;
}

bool ReadSize(CByteReader& reader, Size& size)
{
    return reader.ReadI32(size.width) && reader.ReadI32(size.height);
}

/// Joined in halves, so that many rectangles do not cost their square.
bool Join(std::span<const Rect> rects, CRegion& region)
{
    if (rects.size() < 2) {
        region = rects.empty() ? CRegion() : CRegion(rects.front());
        return true;
    }
    CRegion second;
    return Join(rects.first(rects.size() / 2), region) && Join(rects.subspan(rects.size() / 2), second) &&
           region.Unite(second);
}

} // namespace

ObjectRecord ObjectRecord::Of(const CPicObject& object)
{
    ObjectRecord record{0,
                        object.x,
                        object.y,
                        object.locked,
                        object.visible,
                        object.transparency,
                        object.fallbackSize,
                        object.IsSelected(),
                        {}};
    if (object.image) {
        record.picture = object.image->Number();
        record.name = object.image->name;
    }
    return record;
}

void ObjectRecord::ApplyTo(CPicObject& object) const
{
    object.x = x;
    object.y = y;
    object.locked = locked;
    object.visible = visible;
    object.transparency = transparency;
    object.fallbackSize = fallbackSize;
    object.SetSelected(selected);
    if (object.image)
        object.image->name = name;
}

void ObjectRecord::Write(CByteWriter& writer) const
{
    writer.U32(picture);
    writer.I32(x);
    writer.I32(y);
    writer.U8(locked);
    writer.U8(visible);
    writer.U8(transparency);
    writer.I32(fallbackSize.width);
    writer.I32(fallbackSize.height);
    writer.U8(selected);
    WriteText(writer, name);
}

bool ObjectRecord::Read(CByteReader& reader)
{
    return reader.ReadU32(picture) && reader.ReadI32(x) && reader.ReadI32(y) && ReadFlag(reader, locked) &&
           ReadFlag(reader, visible) && reader.ReadU8(transparency) && ReadSize(reader, fallbackSize) &&
           ReadFlag(reader, selected) && ReadText(reader, name);
}

CanvasRecord CanvasRecord::Of(const CObjectCanvas& canvas)
{
    return {canvas.Size(),           canvas.parameter,          canvas.backgroundIndex,    canvas.frameDelay,
            canvas.transparentIndex, canvas.graphicControlByte, canvas.imageDescriptorByte};
}

void CanvasRecord::ApplyTo(CObjectCanvas& canvas) const
{
    canvas.width = size.width;
    canvas.height = size.height;
    canvas.parameter = parameter;
    canvas.backgroundIndex = backgroundIndex;
    canvas.frameDelay = frameDelay;
    canvas.transparentIndex = transparentIndex;
    canvas.graphicControlByte = graphicControlByte;
    canvas.imageDescriptorByte = imageDescriptorByte;
}

void CanvasRecord::Write(CByteWriter& writer) const
{
    writer.I32(size.width);
    writer.I32(size.height);
    writer.U32(parameter);
    writer.U32(backgroundIndex);
    writer.U16(frameDelay);
    writer.U8(transparentIndex);
    writer.U8(graphicControlByte);
    writer.U8(imageDescriptorByte);
}

bool CanvasRecord::Read(CByteReader& reader)
{
    return ReadSize(reader, size) && reader.ReadU32(parameter) && reader.ReadU32(backgroundIndex) &&
           reader.ReadU16(frameDelay) && reader.ReadU8(transparentIndex) &&
           reader.ReadU8(graphicControlByte) && reader.ReadU8(imageDescriptorByte);
}

void WriteRegion(CByteWriter& writer, const CRegion& region)
{
    const std::span<const Rect> rects = region.Rectangles();
    writer.U32(static_cast<uint32_t>(rects.size()));
    for (const Rect& rect : rects) {
        for (const int side : {rect.left, rect.top, rect.right, rect.bottom})
            writer.I32(side);
    }
}

std::optional<CRegion> ReadRegion(CByteReader& reader)
{
    uint32_t count = 0;
    if (!reader.ReadU32(count) || count > reader.Remaining() / sizeof(Rect))
        return std::nullopt;
    std::vector<Rect> rects(count);
    for (Rect& rect : rects) {
        if (!reader.ReadI32(rect.left) || !reader.ReadI32(rect.top) || !reader.ReadI32(rect.right) ||
            !reader.ReadI32(rect.bottom))
            return std::nullopt;
    }
    CRegion region;
    return Join(rects, region) ? std::optional(region) : std::nullopt;
}
