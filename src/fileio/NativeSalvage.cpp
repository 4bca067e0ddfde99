// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/NativeSalvage.h"

#include "fileio/NativeRecords.h"
#include "fileio/StreamTags.h"
#include "platform/io/FileBytes.h"

#include <algorithm>

namespace {

std::string NameOf(const NativeRecord& record, uint32_t index)
{
    const std::string name = record.name.data();
    return "object " + std::to_string(index) + (name.empty() ? "" : " (" + name + ")");
}

/// What the objects read so far claim together.
struct Promise {
    uint64_t pixels = 0;
    uint64_t bytes = 0; ///< that their pixels take at least in the file
};

/// Reads the object, or says why not.
Ref<CPicObject> ReadWholeObject(const CByteReader& reader, const NativeRecord& record, Promise& promise,
                                std::string& fault)
{
    const uint64_t pixels = uint64_t{record.width} * record.height;
    const uint64_t smallest = SmallestNativePixels(record);
    if (smallest == UINT64_MAX)
        fault = "its size of " + std::to_string(record.width) + " x " + std::to_string(record.height) +
                " cannot be held";
    else if (record.data.offset > reader.Size() || smallest > reader.Size() - record.data.offset)
        fault = "its pixels lie behind the end of the file";
    else if (promise.pixels + pixels > kFreePixels && promise.bytes + smallest > reader.Size())
        fault = "its pixels are those of another object";
    if (!fault.empty())
        return nullptr;
    promise.pixels += pixels;
    promise.bytes += smallest;
    Ref<CPicObject> object = ReadNativeObject(reader, record);
    if (!object)
        fault = "its pixels end early";
    return object;
}

void FitCanvas(CObjectCanvas& canvas)
{
    for (const Ref<CPicObject>& object : canvas.objects) {
        const Rect bounds = object->Rectangle();
        if (int64_t{bounds.right} * std::max(bounds.bottom, 1) > kMaxPicturePixels)
            continue;
        canvas.width = std::max(canvas.width, bounds.right);
        canvas.height = std::max(canvas.height, bounds.bottom);
    }
}

} // namespace

std::optional<NativeSalvage> SalvageNativeFile(const std::filesystem::path& path)
{
    const std::optional<CHeapBlock> bytes = ReadFileBytes(path, kMaxNativeBytes);
    if (!bytes)
        return std::nullopt;
    CByteReader reader(bytes->Bytes());
    if (CByteReader tags = reader; !ReadTag(tags, kStreamTags))
        return std::nullopt;
    NativeSalvage salvage;
    if (reader.Size() < kNativeHeaderBytes) {
        salvage.faults.emplace_back("the header ends early");
        return salvage;
    }
    const bool hasCanvas = ReadNativeHeader(reader, salvage.canvas, salvage.statedObjects);
    if (!hasCanvas) {
        salvage.faults.emplace_back("the canvas size cannot be held");
        salvage.canvas.width = 0;
        salvage.canvas.height = 0;
    }
    Promise promise;
    for (uint32_t index = 0; index < salvage.statedObjects; ++index) {
        NativeRecord record;
        if (!ReadNativeRecord(reader, record)) {
            salvage.faults.push_back("the table ends before object " + std::to_string(index) + " of " +
                                     std::to_string(salvage.statedObjects));
            break;
        }
        std::string fault;
        if (Ref<CPicObject> object = ReadWholeObject(reader, record, promise, fault))
            salvage.canvas.objects.Append(std::move(object));
        else
            salvage.faults.push_back(NameOf(record, index) + ": " + fault);
    }
    if (!hasCanvas)
        FitCanvas(salvage.canvas);
    return salvage;
}
