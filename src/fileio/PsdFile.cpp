// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdFile.h"

#include "fileio/PsdText.h"
#include "fileio/StreamTags.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr uint8_t kHiddenFlag = 2;
constexpr uint32_t kNormalBlending = 0x6E6F726D;     // "norm"
constexpr uint32_t kGroupPassesThrough = 0x70617373; // "pass"
constexpr uint8_t kMaskDisabledFlag = 2;
/// Tagged blocks of effects, of masks made of paths, and of layers that change what lies below them.
constexpr std::array<std::string_view, 24> kKeysBeyondObjects = {
    "lfx2", "lrFX", "lmfx", "vmsk", "vsms", "SoCo", "GdFl", "PtFl", "brit", "levl", "curv", "expA",
    "vibA", "hue ", "hue2", "blnc", "blwh", "phfl", "mixr", "clrL", "nvrt", "post", "thrs", "grdm"};
constexpr uint8_t kMaskInvertedFlag = 4;

/// A section that begins with its length.
bool ReadSection(CByteReader& reader, CByteReader& section)
{
    uint32_t length = 0;
    if (!reader.ReadBigU32(length) || !reader.Slice(reader.Position(), length, section))
        return false;
    return reader.Skip(length);
}

bool ReadRect(CByteReader& reader, Rect& rect)
{
    return reader.ReadBigI32(rect.top) && reader.ReadBigI32(rect.left) && reader.ReadBigI32(rect.bottom) &&
           reader.ReadBigI32(rect.right);
}

/// Whether width and height of a rectangle can be computed and its pixels held.
bool IsSaneRect(const Rect& rect)
{
    const int64_t width = int64_t{rect.right} - rect.left;
    const int64_t height = int64_t{rect.bottom} - rect.top;
    return width >= 0 && height >= 0 && width <= INT32_MAX && height <= INT32_MAX &&
           (width == 0 || height <= kMaxPicturePixels / width);
}

bool ReadHeader(CByteReader& reader, PsdHeader& header)
{
    uint16_t version = 0;
    uint16_t channels = 0;
    uint32_t height = 0;
    uint32_t width = 0;
    uint16_t depth = 0;
    uint16_t mode = 0;
    if (!ReadTag(reader, "8BPS") || !reader.ReadBigU16(version) || !reader.Skip(6) ||
        !reader.ReadBigU16(channels) || !reader.ReadBigU32(height) || !reader.ReadBigU32(width) ||
        !reader.ReadBigU16(depth) || !reader.ReadBigU16(mode))
        return false;
    header.mode = static_cast<PsdMode>(mode);
    const int colours = PsdColourChannels(header.mode);
    const bool isKnownDepth = header.mode == PsdMode::Bitmap ? depth == 1 : depth == 8 || depth == 16;
    if (version != 1 || colours == 0 || channels < colours || channels > 56 || !isKnownDepth || width == 0 ||
        height == 0 || width > INT32_MAX || height > static_cast<uint64_t>(kMaxPicturePixels) / width)
        return false;
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(height);
    header.channels = channels;
    header.depth = depth;
    return true;
}

/// Reds, greens and blues, one after another.
bool ReadPalette(CByteReader section, PsdHeader& header)
{
    std::span<const uint8_t> bytes;
    if (!section.ReadBytes(3 * header.palette.size(), bytes))
        return false;
    for (size_t index = 0; index < header.palette.size(); ++index)
        header.palette[index] = {bytes[512 + index], bytes[256 + index], bytes[index], 255};
    return true;
}

/// A counted run of UTF-16 units; pairs of surrogates are joined.
bool ReadUnicodeName(CByteReader block, std::string& name)
{
    uint32_t count = 0;
    if (!block.ReadBigU32(count) || count > block.Remaining() / 2)
        return false;
    name.clear();
    for (uint16_t unit = 0; count > 0 && block.ReadBigU16(unit); --count) {
        uint32_t character = unit;
        uint16_t low = 0;
        if (unit >= 0xD800 && unit < 0xDC00 && count > 1 && block.ReadBigU16(low)) {
            character = 0x10000 + ((uint32_t{unit} & 0x3FF) << 10) + (low & 0x3FF);
            --count;
        }
        if (character != 0)
            AppendUtf8(name, character);
    }
    return true;
}

bool ReadMask(CByteReader section, std::optional<PsdMask>& mask)
{
    if (section.Size() == 0)
        return true;
    mask.emplace();
    uint8_t flags = 0;
    if (!ReadRect(section, mask->rect) || !IsSaneRect(mask->rect) || !section.ReadU8(mask->outside) ||
        !section.ReadU8(flags))
        return false;
    mask->isDisabled = (flags & kMaskDisabledFlag) != 0;
    mask->isInverted = (flags & kMaskInvertedFlag) != 0;
    return true;
}

/// Calls `take` with the key and the contents of each tagged block.
template <typename Take> void ForEachBlock(CByteReader reader, uint64_t padding, Take take)
{
    uint32_t signature = 0;
    std::span<const uint8_t> key;
    CByteReader block;
    while (reader.ReadBigU32(signature) && (signature == 0x3842494D || signature == 0x38423634) &&
           reader.ReadBytes(4, key) && ReadSection(reader, block)) {
        take(std::string_view(reinterpret_cast<const char*>(key.data()), key.size()), block);
        if (!reader.Skip((padding - block.Size() % padding) % padding))
            return;
    }
}

/// Mask, blending ranges, name and tagged blocks.
bool ReadExtraData(CByteReader extra, PsdLayer& layer)
{
    CByteReader mask;
    CByteReader ranges;
    uint8_t nameLength = 0;
    std::span<const uint8_t> name;
    if (!ReadSection(extra, mask) || !ReadMask(mask, layer.mask) || !ReadSection(extra, ranges) ||
        !extra.ReadU8(nameLength) || !extra.ReadBytes(nameLength, name))
        return false;
    for (const uint8_t letter : name)
        AppendUtf8(layer.name, letter);
    if (!extra.Skip(std::min<uint64_t>((4 - (nameLength + 1) % 4) % 4, extra.Remaining())))
        return false;
    ForEachBlock(CByteReader(extra.Rest()), 2, [&](std::string_view key, CByteReader block) {
        uint32_t divider = 0;
        if (key == "luni")
            static_cast<void>(ReadUnicodeName(block, layer.name));
        if ((key == "lsct" || key == "lsdk") && block.ReadBigU32(divider) && divider != 0)
            layer.kind = divider == 3 ? PsdLayerKind::GroupBottom : PsdLayerKind::GroupTop;
        if (std::ranges::find(kKeysBeyondObjects, key) != kKeysBeyondObjects.end())
            layer.isSimple = false;
    });
    return true;
}

bool ReadLayerRecord(CByteReader& reader, PsdLayer& layer, std::vector<uint32_t>& lengths)
{
    uint16_t channels = 0;
    uint8_t flags = 0;
    CByteReader extra;
    if (!ReadRect(reader, layer.rect) || !IsSaneRect(layer.rect) || !reader.ReadBigU16(channels))
        return false;
    for (int index = 0; index < channels; ++index) {
        int16_t number = 0;
        uint32_t length = 0;
        if (!reader.ReadBigI16(number) || !reader.ReadBigU32(length))
            return false;
        layer.channels.push_back({number, {}});
        lengths.push_back(length);
    }
    uint32_t blending = 0;
    uint8_t clipping = 0;
    if (!reader.Skip(4) || !reader.ReadBigU32(blending) || !reader.ReadU8(layer.opacity) ||
        !reader.ReadU8(clipping) || !reader.ReadU8(flags) || !reader.Skip(1) || !ReadSection(reader, extra))
        return false;
    layer.isSimple = (blending == kNormalBlending || blending == kGroupPassesThrough) && clipping == 0;
    layer.isVisible = (flags & kHiddenFlag) == 0;
    return ReadExtraData(extra, layer);
}

/// All layer records, then the samples of their channels.
bool ReadLayers(CByteReader reader, PsdFile& file)
{
    int16_t count = 0;
    if (!reader.ReadBigI16(count))
        return reader.Size() == 0;
    file.hasMergedAlpha = count < 0;
    std::vector<uint32_t> lengths;
    for (int index = 0; index < std::abs(int{count}); ++index) {
        if (!ReadLayerRecord(reader, file.layers.emplace_back(), lengths))
            return false;
    }
    auto length = lengths.begin();
    for (PsdLayer& layer : file.layers) {
        for (PsdChannel& channel : layer.channels) {
            if (!reader.Slice(reader.Position(), *length, channel.data) || !reader.Skip(*length++))
                return false;
        }
    }
    return true;
}

/// Deep files keep their layers in a tagged block behind an empty list.
bool ReadLayerSection(CByteReader section, PsdFile& file)
{
    if (section.Size() == 0)
        return true;
    CByteReader list;
    CByteReader globalMask;
    if (!ReadSection(section, list) || !ReadLayers(list, file))
        return false;
    if (!file.layers.empty() || !ReadSection(section, globalMask))
        return true;
    bool isWhole = true;
    ForEachBlock(CByteReader(section.Rest()), 4, [&](std::string_view key, CByteReader block) {
        if (key == "Lr16" || key == "Layr")
            isWhole = ReadLayers(block, file) && isWhole;
    });
    return isWhole;
}

} // namespace

int PsdColourChannels(PsdMode mode)
{
    switch (mode) {
    case PsdMode::Bitmap:
    case PsdMode::Grey:
    case PsdMode::Indexed:
    case PsdMode::Duotone:
        return 1;
    case PsdMode::Rgb:
        return 3;
    case PsdMode::Cmyk:
        return 4;
    }
    return 0;
}

std::optional<PsdFile> ParsePsdFile(std::span<const uint8_t> bytes)
{
    CByteReader reader(bytes);
    PsdFile file;
    CByteReader colours;
    CByteReader resources;
    CByteReader layers;
    if (!ReadHeader(reader, file.header) || !ReadSection(reader, colours) ||
        !ReadSection(reader, resources) || !ReadSection(reader, layers))
        return std::nullopt;
    if (file.header.mode == PsdMode::Indexed && !ReadPalette(colours, file.header))
        return std::nullopt;
    if (!ReadLayerSection(layers, file))
        return std::nullopt;
    file.merged = CByteReader(reader.Rest());
    return file;
}

bool HasSimpleLayers(const PsdFile& file)
{
    return std::ranges::all_of(file.layers,
                               [](const PsdLayer& layer) { return layer.isSimple || !layer.isVisible; });
}

size_t CountPsdPictures(const PsdFile& file)
{
    return static_cast<size_t>(std::ranges::count_if(file.layers, [](const PsdLayer& layer) {
        return layer.kind == PsdLayerKind::Pixels && !layer.rect.IsEmpty();
    }));
}
