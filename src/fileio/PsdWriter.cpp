// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdWriter.h"

#include "fileio/PsdFile.h"
#include "fileio/PsdText.h"
#include "fileio/RowCoder.h"
#include "model/Compositing.h"
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteWriter.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>
#include <vector>

namespace {

constexpr int kMaxSide = 30000;
constexpr uint16_t kPackedRows = 1;
constexpr uint8_t kHiddenFlag = 2;
constexpr size_t kLongestPlainName = 31;

/// The channels of a layer, and the bytes of a pixel that they and those of the merged picture come from.
constexpr std::array<int, 4> kLayerChannels = {kPsdAlphaChannel, 0, 1, 2};
constexpr std::array<size_t, 4> kLayerBytes = {3, 2, 1, 0};
constexpr std::array<size_t, 4> kMergedBytes = {2, 1, 0, 3};

/// How long the packed channels of a layer are, each with its compression.
using ChannelLengths = std::array<uint32_t, kLayerChannels.size()>;

void WriteTag(CByteWriter& writer, std::string_view tag)
{
    writer.Text(tag, tag.size());
}

/// The packed rows of a channel and their lengths. Whoever packs one picture after another uses the same
/// memory for all.
struct PackedChannel {
    CByteWriter lengths;
    std::vector<uint8_t> rows;
    [[nodiscard]] size_t Size() const { return lengths.Size() + rows.size(); }
};
using PackedPicture = std::array<PackedChannel, 4>;

[[nodiscard]] bool PackChannel(const CPackedDib& dib, size_t pixelByte, PackedChannel& channel)
{
    const auto width = static_cast<size_t>(dib.Width());
    CHeapBlock samples = CHeapBlock::Allocate(width + kRowSlack);
    CHeapBlock packed = CHeapBlock::Allocate(PackedRowRoom(width));
    if (samples.IsEmpty() || packed.IsEmpty())
        return false;
    channel.lengths = {};
    channel.rows.clear();
    for (int y = 0; y < dib.Height(); ++y) {
        GatherChannel(dib.Row(y), 4, pixelByte, width, samples.Data());
        const size_t length = CompressRow(samples.Data(), width, packed.Data());
        if (length > UINT16_MAX)
            return false;
        channel.lengths.BigU16(static_cast<uint16_t>(length));
        channel.rows.insert(channel.rows.end(), packed.Data(), packed.Data() + length);
    }
    return true;
}

/// Packs the bytes of pixels one by one, in the order given.
[[nodiscard]] bool PackPicture(const CPackedDib& dib, const std::array<size_t, 4>& pixelBytes,
                               PackedPicture& picture)
{
    std::atomic<bool> isWhole = true;
    ForRowBands(static_cast<int>(picture.size()), 1, [&](int begin, int end) {
        for (auto index = static_cast<size_t>(begin); index < static_cast<size_t>(end); ++index) {
            if (!PackChannel(dib, pixelBytes[index], picture[index]))
                isWhole = false;
        }
    });
    return isWhole;
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

void WriteLayerRecord(CByteWriter& writer, const CPicObject& object, const ChannelLengths& channelBytes)
{
    const Rect rect = object.Rectangle();
    for (const int edge : {rect.top, rect.left, rect.bottom, rect.right})
        writer.BigU32(static_cast<uint32_t>(edge));
    writer.BigU16(static_cast<uint16_t>(kLayerChannels.size()));
    for (size_t index = 0; index < kLayerChannels.size(); ++index) {
        writer.BigU16(static_cast<uint16_t>(kLayerChannels[index]));
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

/// The object that a layer is written of, and its channels once they are written.
struct StoredLayer {
    const CPicObject* object = nullptr;
    ChannelLengths channelBytes{};
};

std::vector<StoredLayer> LayersOf(const CObjectList& objects)
{
    std::vector<StoredLayer> layers;
    for (size_t index = 0; index < objects.Count(); ++index) {
        const CPicObject& object = *objects.At(index);
        if (object.image && !object.image->Dib().IsEmpty())
            layers.push_back({&object});
    }
    return layers;
}

[[nodiscard]] bool WriteChannels(CAtomicFile& file, StoredLayer& layer, PackedPicture& picture)
{
    if (!PackPicture(layer.object->image->Dib(), kLayerBytes, picture))
        return false;
    CByteWriter compression;
    compression.BigU16(kPackedRows);
    for (size_t index = 0; index < picture.size(); ++index) {
        if (!file.Write(compression.Collected()) || !file.Write(picture[index].lengths.Collected()) ||
            !file.Write(picture[index].rows))
            return false;
        layer.channelBytes[index] = static_cast<uint32_t>(compression.Size() + picture[index].Size());
    }
    return true;
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

/// The merged picture, lengths of all rows first.
[[nodiscard]] bool WriteMerged(CAtomicFile& file, CPackedDib merged, PackedPicture& picture)
{
    if (merged.IsEmpty())
        return false;
    PutOnWhite(merged);
    if (!PackPicture(merged, kMergedBytes, picture))
        return false;
    CByteWriter head;
    head.BigU16(kPackedRows);
    for (const PackedChannel& channel : picture)
        head.Bytes(channel.lengths.Collected());
    return file.Write(head.Collected()) && std::ranges::all_of(picture, [&](const PackedChannel& channel) {
               return file.Write(channel.rows);
           });
}

/// Everything up to the channels of the layers. channelBytes: of all of them.
CByteWriter FrontOf(const CObjectCanvas& canvas, const std::vector<StoredLayer>& layers,
                    uint64_t channelBytes)
{
    CByteWriter records;
    for (const StoredLayer& layer : layers)
        WriteLayerRecord(records, *layer.object, layer.channelBytes);
    const uint64_t listBytes = 2 + records.Size() + channelBytes;

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
    const uint64_t evenListBytes = listBytes + listBytes % 2;
    writer.BigU32(static_cast<uint32_t>(4 + evenListBytes + 4));
    writer.BigU32(static_cast<uint32_t>(evenListBytes));
    // A negative count says that the merged picture has alpha.
    writer.BigU16(static_cast<uint16_t>(-static_cast<int>(layers.size())));
    writer.Bytes(records.Collected());
    return writer;
}

} // namespace

bool SavePsdFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    std::vector<StoredLayer> layers = LayersOf(canvas.objects);
    if (canvas.width < 1 || canvas.height < 1 || canvas.width > kMaxSide || canvas.height > kMaxSide ||
        layers.size() > INT16_MAX)
        return false;
    CAtomicFile file(path);
    CByteWriter front = FrontOf(canvas, layers, 0);
    if (!file.Write(front.Collected()))
        return false;
    PackedPicture picture;
    uint64_t channelBytes = 0;
    size_t done = 0;
    for (StoredLayer& layer : layers) {
        if (!WriteChannels(file, layer, picture))
            return false;
        for (const uint32_t bytes : layer.channelBytes)
            channelBytes += bytes;
        if (front.Size() + channelBytes > INT32_MAX)
            return false;
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>(++done * 100 / (layers.size() + 1)));
    }
    CByteWriter end;
    end.Zeroes((front.Size() + channelBytes) % 2);
    end.BigU32(0); // mask of all layers
    if (!file.Write(end.Collected()) || !WriteMerged(file, Flatten(canvas), picture))
        return false;
    front = FrontOf(canvas, layers, channelBytes);
    if (std::fseek(file.Stream(), 0, SEEK_SET) != 0 || !file.Write(front.Collected()))
        return false;
    if (progress != nullptr)
        progress->SetPosition(100);
    return file.Commit();
}
