// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdWriter.h"

#include "fileio/PsdFile.h"
#include "fileio/PsdText.h"
#include "fileio/RowCoder.h"
#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteWriter.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr int kMaxSide = 30000;
constexpr uint16_t kPackedRows = 1;
constexpr uint8_t kHiddenFlag = 2;
constexpr size_t kLongestPlainName = 31;

struct StoredChannel {
    int16_t number;
    size_t pixelByte;
};
constexpr std::array<StoredChannel, 4> kLayerChannels = {{{kPsdAlphaChannel, 3}, {0, 2}, {1, 1}, {2, 0}}};
constexpr std::array<size_t, 4> kMergedBytes = {2, 1, 0, 3};

void WriteTag(CByteWriter& writer, std::string_view tag)
{
    writer.Text(tag, tag.size());
}

/// Appends a channel's packed rows to `rows` and their lengths to `lengths`.
[[nodiscard]] bool PackChannel(const CPackedDib& dib, size_t pixelByte, CByteWriter& lengths,
                               CByteWriter& rows)
{
    const auto width = static_cast<size_t>(dib.Width());
    CHeapBlock samples = CHeapBlock::Allocate(width + kRowSlack);
    CHeapBlock packed = CHeapBlock::Allocate(PackedRowRoom(width));
    if (samples.IsEmpty() || packed.IsEmpty())
        return false;
    for (int y = 0; y < dib.Height(); ++y) {
        GatherChannel(dib.Row(y), 4, pixelByte, width, samples.Data());
        const size_t length = CompressRow(samples.Data(), width, packed.Data());
        if (length > UINT16_MAX)
            return false;
        lengths.BigU16(static_cast<uint16_t>(length));
        rows.Bytes(packed.Bytes().first(length));
    }
    return true;
}

/// Names of other letters stand in the tagged block alone.
void WritePlainName(CByteWriter& writer, std::string_view name)
{
    const std::string_view cut = name.substr(0, kLongestPlainName);
    writer.U8(static_cast<uint8_t>(cut.size()));
    for (const char letter : cut)
        writer.U8(static_cast<uint8_t>(letter) < 0x80 ? static_cast<uint8_t>(letter) : uint8_t{'?'});
    writer.Zeroes((4 - (cut.size() + 1) % 4) % 4);
}

void WriteUnicodeName(CByteWriter& writer, std::string_view name)
{
    const std::u16string units = Utf16Of(name);
    const size_t padding = units.size() % 2 * 2;
    WriteTag(writer, "8BIMluni");
    writer.BigU32(static_cast<uint32_t>(4 + units.size() * 2 + padding));
    writer.BigU32(static_cast<uint32_t>(units.size()));
    for (const char16_t unit : units)
        writer.BigU16(static_cast<uint16_t>(unit));
    writer.Zeroes(padding);
}

void WriteLayerRecord(CByteWriter& writer, const CPicObject& object,
                      const std::array<uint32_t, kLayerChannels.size()>& channelBytes)
{
    const Rect rect = object.Rectangle();
    for (const int edge : {rect.top, rect.left, rect.bottom, rect.right})
        writer.BigU32(static_cast<uint32_t>(edge));
    writer.BigU16(static_cast<uint16_t>(kLayerChannels.size()));
    for (size_t index = 0; index < kLayerChannels.size(); ++index) {
        writer.BigU16(static_cast<uint16_t>(kLayerChannels[index].number));
        writer.BigU32(channelBytes[index]);
    }
    WriteTag(writer, "8BIMnorm");
    writer.U8(static_cast<uint8_t>(255 - object.transparency));
    writer.U8(0); // clipping
    writer.U8(object.visible ? 0 : kHiddenFlag);
    writer.U8(0);

    CByteWriter extra;
    extra.BigU32(0); // mask
    extra.BigU32(0); // blending ranges
    WritePlainName(extra, object.image->name);
    WriteUnicodeName(extra, object.image->name);
    writer.BigU32(static_cast<uint32_t>(extra.Size()));
    writer.Bytes(extra.Collected());
}

/// Layer records and the channels of all layers, each kind for itself.
struct LayerParts {
    CByteWriter records;
    CByteWriter channels;
    int count = 0;
};

[[nodiscard]] bool AddLayer(LayerParts& parts, const CPicObject& object)
{
    std::array<uint32_t, kLayerChannels.size()> channelBytes{};
    for (size_t index = 0; index < kLayerChannels.size(); ++index) {
        CByteWriter lengths;
        CByteWriter rows;
        if (!PackChannel(object.image->Dib(), kLayerChannels[index].pixelByte, lengths, rows))
            return false;
        parts.channels.BigU16(kPackedRows);
        parts.channels.Bytes(lengths.Collected());
        parts.channels.Bytes(rows.Collected());
        channelBytes[index] = static_cast<uint32_t>(2 + lengths.Size() + rows.Size());
    }
    WriteLayerRecord(parts.records, object, channelBytes);
    ++parts.count;
    return parts.channels.Size() < INT32_MAX;
}

/// Colours of a merged picture with transparency are stored over white.
void PutOnWhite(CPackedDib& dib)
{
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* pixel = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x, pixel += 4) {
            const int alpha = pixel[3];
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = static_cast<uint8_t>((pixel[channel] * alpha + 127) / 255 + 255 - alpha);
        }
    }
}

CByteWriter HeaderOf(const CObjectCanvas& canvas)
{
    CByteWriter writer;
    WriteTag(writer, "8BPS");
    writer.BigU16(1);
    writer.Zeroes(6);
    writer.BigU16(static_cast<uint16_t>(kMergedBytes.size()));
    writer.BigU32(static_cast<uint32_t>(canvas.height));
    writer.BigU32(static_cast<uint32_t>(canvas.width));
    writer.BigU16(8);
    writer.BigU16(static_cast<uint16_t>(PsdMode::Rgb));
    writer.BigU32(0); // palette
    writer.BigU32(0); // resources
    return writer;
}

/// The layer section up to the channels. A negative count says that the merged picture has alpha.
CByteWriter LayerSectionHead(const LayerParts& parts, size_t padding)
{
    const size_t listBytes = 2 + parts.records.Size() + parts.channels.Size() + padding;
    CByteWriter writer;
    writer.BigU32(static_cast<uint32_t>(4 + listBytes + 4));
    writer.BigU32(static_cast<uint32_t>(listBytes));
    writer.BigU16(static_cast<uint16_t>(-parts.count));
    writer.Bytes(parts.records.Collected());
    return writer;
}

} // namespace

bool SavePsdFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    const auto report = [&](size_t done, size_t all) {
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>(done * 100 / all));
    };
    const size_t count = canvas.objects.Count();
    if (canvas.width < 1 || canvas.height < 1 || canvas.width > kMaxSide || canvas.height > kMaxSide ||
        count > INT16_MAX)
        return false;
    LayerParts parts;
    for (size_t index = 0; index < count; ++index) {
        const CPicObject& object = *canvas.objects.At(index);
        if (object.image && !object.image->Dib().IsEmpty() && !AddLayer(parts, object))
            return false;
        report(index + 1, count + 1);
    }
    CPackedDib merged = Flatten(canvas);
    if (merged.IsEmpty())
        return false;
    PutOnWhite(merged);
    CByteWriter lengths;
    CByteWriter rows;
    for (const size_t pixelByte : kMergedBytes) {
        if (!PackChannel(merged, pixelByte, lengths, rows))
            return false;
    }

    const size_t padding = (parts.records.Size() + parts.channels.Size()) % 2;
    CByteWriter end;
    end.Zeroes(padding);
    end.BigU32(0); // mask of all layers
    end.BigU16(kPackedRows);
    CAtomicFile file(path);
    for (const CByteWriter& part :
         {HeaderOf(canvas), LayerSectionHead(parts, padding), std::move(parts.channels), std::move(end),
          std::move(lengths), std::move(rows)}) {
        if (!file.Write(part.Collected()))
            return false;
    }
    report(1, 1);
    return file.Commit();
}
