// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ClipboardStream.h"

#include "fileio/PackedPixels.h"
#include "fileio/StreamTags.h"
#include "platform/io/ByteReader.h"
#include "platform/io/ByteWriter.h"

namespace {

struct EntryHeader {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t bitCount = 0;
    uint32_t transparency = 0;
    uint32_t length = 0; ///< of the packed pixels; not needed for reading
};

bool ReadEntryHeader(CByteReader& reader, EntryHeader& entry)
{
    return reader.ReadU32(entry.width) && reader.ReadU32(entry.height) && reader.ReadU32(entry.bitCount) &&
           reader.ReadU32(entry.transparency) && reader.ReadU32(entry.length);
}

} // namespace

std::vector<uint8_t> BuildClipboardStream(std::span<const CopiedPicture> pictures)
{
    CByteWriter writer;
    writer.Text(kStreamTags, kStreamTags.size());
    writer.U32(static_cast<uint32_t>(pictures.size()));
    for (const CopiedPicture& picture : pictures) {
        writer.I32(picture.dib.Width());
        writer.I32(picture.dib.Height());
        writer.U32(static_cast<uint32_t>(picture.dib.BitCount()));
        writer.U32(picture.transparency);
        const size_t lengthAt = writer.Size();
        writer.U32(0);
        const bool packed = PackPixels(picture.dib, [&](std::span<const uint8_t> bytes) {
            writer.Bytes(bytes);
            return true;
        });
        if (!packed)
            return {};
        writer.PatchU32(lengthAt, static_cast<uint32_t>(writer.Size() - lengthAt - sizeof(uint32_t)));
    }
    return writer.Take();
}

std::optional<std::vector<PastedPicture>> ParseClipboardStream(std::span<const uint8_t> stream)
{
    CByteReader reader(stream);
    uint32_t count = 0;
    if (!ReadTag(reader, kStreamTags) || !reader.ReadU32(count))
        return std::nullopt;
    std::vector<PastedPicture> pictures;
    for (uint32_t index = 0; index < count; ++index) {
        EntryHeader entry;
        if (!ReadEntryHeader(reader, entry))
            return std::nullopt;
        std::span<const uint8_t> rest = reader.Rest();
        CPackedDib dib = UnpackPixels(rest, entry.width, entry.height, entry.bitCount);
        if (dib.IsEmpty() || !reader.Seek(reader.Size() - rest.size()))
            return std::nullopt;
        pictures.push_back({std::move(dib), static_cast<uint8_t>(entry.transparency)});
    }
    return pictures;
}
