// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/NativeFile.h"

#include "fileio/LoadedPicture.h"
#include "fileio/PackedPixels.h"
#include "fileio/RowCoder.h"
#include "fileio/StatusText.h"
#include "fileio/StreamTags.h"
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteReader.h"
#include "platform/io/ByteWriter.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace {

constexpr size_t kHeaderBytes = 36;
constexpr size_t kRecordBytes = 76;
constexpr size_t kNameBytes = 48;
/// Offsets in the file have 32 bits.
constexpr int64_t kMaxNativeBytes = UINT32_MAX;

/// Where an object's packed pixels stand in the file.
struct DataPlace {
    uint32_t offset = 0;
    uint32_t length = 0;
};

/// One entry of the object table.
struct Record {
    uint32_t width = 0;
    uint32_t height = 0;
    std::array<char, kNameBytes + 1> name{};
    int32_t x = 0;
    int32_t y = 0;
    uint8_t visible = 0;
    uint8_t locked = 0;
    uint8_t transparency = 0;
    DataPlace data;
};

std::vector<uint8_t> HeaderAndTable(const CObjectCanvas& canvas, const std::vector<DataPlace>& places)
{
    CByteWriter writer;
    writer.Text(kStreamTags, kStreamTags.size());
    writer.U32(canvas.parameter);
    writer.U32(canvas.backgroundIndex);
    writer.I32(canvas.width);
    writer.I32(canvas.height);
    writer.U16(0);
    writer.U16(canvas.frameDelay);
    writer.U8(canvas.transparentIndex);
    writer.U8(canvas.graphicControlByte);
    writer.U8(canvas.imageDescriptorByte);
    writer.U8(0);
    writer.U32(static_cast<uint32_t>(canvas.objects.Count()));
    for (size_t index = 0; index < places.size(); ++index) {
        const CPicObject& object = *canvas.objects.At(index);
        const CRasterImage* image = object.image.Get();
        writer.I32(image != nullptr ? image->Width() : 0);
        writer.I32(image != nullptr ? image->Height() : 0);
        writer.Text(image != nullptr ? std::span<const char>(image->name) : std::span<const char>(),
                    kNameBytes);
        writer.I32(object.x);
        writer.I32(object.y);
        writer.U8(object.visible ? 1 : 0);
        writer.U8(object.locked ? 1 : 0);
        writer.U8(object.transparency);
        writer.U8(0);
        writer.U32(places[index].offset);
        writer.U32(places[index].length);
    }
    return writer.Take();
}

bool WritePixels(CAtomicFile& file, const CPicObject& object, uint64_t& end)
{
    if (!object.image || object.image->Dib().IsEmpty())
        return true;
    return PackPixels(object.image->Dib(), [&](std::span<const uint8_t> bytes) {
        end += bytes.size();
        return end <= static_cast<uint64_t>(kMaxNativeBytes) && file.Write(bytes);
    });
}

bool ReadCanvasFields(CByteReader& reader, CObjectCanvas& canvas, uint32_t& objectCount)
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

bool ReadRecord(CByteReader& reader, Record& record)
{
    std::span<const uint8_t> name;
    if (!reader.ReadU32(record.width) || !reader.ReadU32(record.height) ||
        !reader.ReadBytes(kNameBytes, name) || !reader.ReadI32(record.x) || !reader.ReadI32(record.y) ||
        !reader.ReadU8(record.visible) || !reader.ReadU8(record.locked) ||
        !reader.ReadU8(record.transparency) || !reader.Skip(1) || !reader.ReadU32(record.data.offset) ||
        !reader.ReadU32(record.data.length))
        return false;
    std::ranges::copy(name, record.name.begin());
    return true;
}

/// All records, once it is clear that the file is long enough for what they claim together. Only a few pixels
/// may be shared by several, or a small file could ask for any amount of memory.
std::optional<std::vector<Record>> ReadTable(CByteReader& reader, uint32_t objectCount)
{
    if (uint64_t{objectCount} * kRecordBytes > reader.Remaining())
        return std::nullopt;
    std::vector<Record> records(objectCount);
    uint64_t pixels = 0;
    uint64_t needed = 0;
    for (Record& record : records) {
        if (!ReadRecord(reader, record) ||
            uint64_t{record.width} * record.height > static_cast<uint64_t>(kMaxPicturePixels))
            return std::nullopt;
        pixels += uint64_t{record.width} * record.height;
        needed += 4 * SmallestPackedRow(record.width) * record.height;
    }
    if (pixels > kFreePixels && needed > reader.Remaining())
        return std::nullopt;
    return records;
}

Ref<CPicObject> ReadObject(CByteReader& reader, const Record& record)
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

} // namespace

bool SaveNativeFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IUserInterface& ui)
{
    const size_t count = canvas.objects.Count();
    std::vector<DataPlace> places(count);
    CAtomicFile file(path);
    if (!file.Write(HeaderAndTable(canvas, places)))
        return false;
    const CFileStatus status(ui, Str::SavingFile, path);
    uint64_t end = kHeaderBytes + count * kRecordBytes;
    for (size_t index = 0; index < count; ++index) {
        const uint64_t begin = end;
        if (!WritePixels(file, *canvas.objects.At(index), end))
            return false;
        places[index] = {static_cast<uint32_t>(begin), static_cast<uint32_t>(end - begin)};
        ui.SetPosition(static_cast<int>((index + 1) * 100 / count));
    }
    return std::fseek(file.Stream(), 0, SEEK_SET) == 0 && file.Write(HeaderAndTable(canvas, places)) &&
           file.Commit();
}

bool LoadNativeFile(CObjectCanvas& canvas, const std::filesystem::path& path, IUserInterface& ui)
{
    const std::optional<CHeapBlock> bytes = ReadFileBytes(path, kMaxNativeBytes);
    if (!bytes)
        return false;
    CByteReader reader(bytes->Bytes());
    CObjectCanvas loaded = canvas;
    uint32_t count = 0;
    if (!ReadCanvasFields(reader, loaded, count))
        return false;
    const CFileStatus status(ui, Str::ReadingFile, path);
    const std::optional<std::vector<Record>> records = ReadTable(reader, count);
    if (!records)
        return false;
    for (uint32_t index = 0; index < count; ++index) {
        Ref<CPicObject> object = ReadObject(reader, (*records)[index]);
        if (!object)
            return false;
        loaded.objects.Append(std::move(object));
        ui.SetPosition(static_cast<int>(uint64_t{index} * 100 / count));
    }
    canvas = std::move(loaded);
    return true;
}
