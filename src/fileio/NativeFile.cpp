// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/NativeFile.h"

#include "fileio/NativeRecords.h"
#include "fileio/PackedPixels.h"
#include "fileio/PathExtension.h"
#include "fileio/StatusText.h"
#include "fileio/StreamTags.h"
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteWriter.h"
#include "platform/io/FileBytes.h"

#include <optional>
#include <vector>

namespace {

constexpr std::string_view kNativeExtension = "PXD";

std::vector<uint8_t> HeaderAndTable(const CObjectCanvas& canvas, const std::vector<NativePlace>& places)
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
                    kNativeNameBytes);
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

/// All records, once it is clear that the file is long enough for what they claim together. Only a few pixels
/// may be shared by several, or a small file could ask for any amount of memory.
std::optional<std::vector<NativeRecord>> ReadTable(CByteReader& reader, uint32_t objectCount)
{
    if (uint64_t{objectCount} * kNativeRecordBytes > reader.Remaining())
        return std::nullopt;
    std::vector<NativeRecord> records(objectCount);
    uint64_t pixels = 0;
    uint64_t needed = 0;
    for (NativeRecord& record : records) {
        if (!ReadNativeRecord(reader, record) || SmallestNativePixels(record) == UINT64_MAX)
            return std::nullopt;
        pixels += uint64_t{record.width} * record.height;
        needed += SmallestNativePixels(record);
    }
    if (pixels > kFreePixels && needed > reader.Remaining())
        return std::nullopt;
    return records;
}

} // namespace

bool IsNativePath(const std::filesystem::path& path)
{
    return UpperCasedExtension(path) == kNativeExtension;
}

bool SaveNativeFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IUserInterface& ui)
{
    const size_t count = canvas.objects.Count();
    std::vector<NativePlace> places(count);
    CAtomicFile file(path);
    if (!file.Write(HeaderAndTable(canvas, places)))
        return false;
    const CFileStatus status(ui, Str::SavingFile, path);
    uint64_t end = kNativeHeaderBytes + count * kNativeRecordBytes;
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
    if (!ReadNativeHeader(reader, loaded, count))
        return false;
    const CFileStatus status(ui, Str::ReadingFile, path);
    const std::optional<std::vector<NativeRecord>> records = ReadTable(reader, count);
    if (!records)
        return false;
    for (uint32_t index = 0; index < count; ++index) {
        Ref<CPicObject> object = ReadNativeObject(reader, (*records)[index]);
        if (!object)
            return false;
        loaded.objects.Append(std::move(object));
        ui.SetPosition(static_cast<int>(uint64_t{index} * 100 / count));
    }
    canvas = std::move(loaded);
    return true;
}
