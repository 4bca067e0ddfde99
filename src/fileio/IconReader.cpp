// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/IconReader.h"

#include "fileio/LoadedPicture.h"
#include "model/DibOperations.h"
#include "platform/codec/Image.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

namespace {

constexpr size_t kDirectoryEntryBytes = 16;
constexpr std::array<uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

void GrowCanvas(CObjectCanvas& canvas, const CPackedDib& dib)
{
    canvas.width = std::max(canvas.width, dib.Width());
    canvas.height = std::max(canvas.height, dib.Height());
}

bool ReadHeader(CByteReader& reader, DibHeader& header)
{
    std::span<const uint8_t> bytes;
    static_assert(std::endian::native == std::endian::little, "the header is read as it lies in memory");
    if (!reader.ReadBytes(sizeof header, bytes))
        return false;
    std::memcpy(&header, bytes.data(), sizeof header);
    return true;
}

/// Copies what stands in the file into a part of a picture.
bool ReadInto(CByteReader& reader, std::span<uint8_t> target)
{
    std::span<const uint8_t> bytes;
    if (!reader.ReadBytes(target.size(), bytes))
        return false;
    std::ranges::copy(bytes, target.begin());
    return true;
}

bool IsKnownKind(const DibHeader& header)
{
    constexpr std::array<int, 6> kDepths = {1, 4, 8, 16, 24, 32};
    return header.width > 0 && header.height / 2 > 0 && header.compression == 0 &&
           std::ranges::find(kDepths, int{header.bitCount}) != kDepths.end();
}

/// Colours and pixels of the image whose header was read. Its length is compared with the file's before
/// memory is asked for.
CPackedDib ReadColourImage(CByteReader& reader, const DibHeader& header)
{
    const int height = header.height / 2;
    const uint64_t pixelBytes =
        static_cast<uint64_t>(DibStride(header.width, header.bitCount)) * static_cast<uint64_t>(height);
    const bool hasPalette = header.bitCount <= 8;
    if (pixelBytes > reader.Remaining() || (hasPalette && header.coloursUsed > reader.Remaining() / 4))
        return {};
    CPackedDib dib = CPackedDib::Create(header.width, height, header.bitCount,
                                        hasPalette ? static_cast<int>(header.coloursUsed) : 0);
    if (dib.IsEmpty())
        return {};
    const std::span<RgbQuad> colours = dib.ColourTable();
    if (!ReadInto(reader, {reinterpret_cast<uint8_t*>(colours.data()), colours.size_bytes()}) ||
        !ReadInto(reader, dib.Bits()))
        return {};
    return dib;
}

bool ReadPngImage(CObjectCanvas& canvas, CByteReader& reader, std::span<const uint8_t> png)
{
    CPackedDib dib = CImage::DecodePng(png, nullptr);
    if (!dib.IsEmpty() && dib.BitCount() != 32)
        dib = ConvertTo32Bits(dib);
    if (dib.IsEmpty() || !reader.Skip(png.size()))
        return false;
    GrowCanvas(canvas, dib);
    AppendPicture(canvas, std::move(dib));
    return true;
}

bool ReadAllImages(CObjectCanvas& canvas, CByteReader& reader, IProgress* progress)
{
    uint16_t type = 0;
    uint16_t count = 0;
    if (!reader.Skip(2) || !reader.ReadU16(type) || !reader.ReadU16(count) || type < 1 || type > 2 ||
        count == 0 || !reader.Skip(count * kDirectoryEntryBytes))
        return false;
    for (int index = 0; index < count; ++index) {
        if (!ReadIconImage(canvas, reader))
            return false;
        if (progress != nullptr)
            progress->SetPosition(index * 100 / count);
    }
    return true;
}

} // namespace

std::optional<std::span<const uint8_t>> PngAt(const CByteReader& reader)
{
    CByteReader png(reader.Rest());
    std::span<const uint8_t> bytes;
    if (!png.ReadBytes(kPngSignature.size(), bytes) || !std::ranges::equal(bytes, kPngSignature))
        return std::nullopt;
    constexpr uint32_t kEndChunk = 0x49454E44;
    uint32_t length = 0;
    uint32_t type = 0;
    while (type != kEndChunk) {
        if (!png.ReadBigU32(length) || !png.ReadBigU32(type) || !png.Skip(uint64_t{length} + 4))
            return std::nullopt;
    }
    return reader.Rest().first(png.Position());
}

bool ReadIconImage(CObjectCanvas& canvas, CByteReader& reader)
{
    if (const auto png = PngAt(reader))
        return ReadPngImage(canvas, reader, *png);
    DibHeader header;
    if (!ReadHeader(reader, header) || !IsKnownKind(header))
        return false;
    const CPackedDib dib = ReadColourImage(reader, header);
    if (dib.IsEmpty())
        return false;
    CPackedDib mask = CPackedDib::Create(dib.Width(), dib.Height(), 1);
    if (mask.IsEmpty() || !ReadInto(reader, mask.Bits()))
        return false;
    CPackedDib converted = ConvertTo32Bits(dib, mask);
    if (converted.IsEmpty())
        return false;
    GrowCanvas(canvas, converted);
    AppendPicture(canvas, std::move(converted));
    return true;
}

bool LoadIconFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    return LoadAllOrNothing(canvas, path, progress, ReadAllImages);
}
