// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifReader.h"

#include "fileio/GifRows.h"
#include "fileio/LoadedPicture.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr uint8_t kImageBlock = ',';
constexpr uint8_t kExtensionBlock = '!';
constexpr uint8_t kGraphicControl = 0xF9;
constexpr uint8_t kPlainText = 0x01;
constexpr uint8_t kComment = 0xFE;
constexpr uint8_t kApplication = 0xFF;

constexpr uint8_t kHasColourTable = 0x80;
constexpr uint8_t kIsInterlaced = 0x40;
constexpr uint8_t kHasTransparentIndex = 0x01;

/// Pixels that a byte of data can give.
constexpr uint64_t kPixelsPerByte = 4096;

/// Colours the picture's first `count` stored indices; what was not decoded stays transparent black.
void PlaceIndices(const uint8_t* indices, size_t count, const std::array<RgbQuad, 256>& colours,
                  bool isInterlaced, CPackedDib& dib)
{
    const auto width = static_cast<size_t>(dib.Width());
    for (CGifRows rows(dib.Height(), isInterlaced); !rows.AtEnd() && count > 0; rows.Advance()) {
        const size_t inRow = std::min(width, count);
        uint8_t* row = dib.Row(rows.Row());
        for (size_t x = 0; x < inRow; ++x)
            std::memcpy(row + x * 4, &colours[indices[x]], 4);
        indices += inRow;
        count -= inRow;
    }
}

} // namespace

bool CGifReader::ReadColours(CByteReader& reader, uint8_t packed, Colours& colours)
{
    const size_t count = size_t{2} << (packed & 7);
    std::span<const uint8_t> bytes;
    if (!reader.ReadBytes(count * 3, bytes))
        return false;
    colours.fill({0, 0, 0, 255});
    for (size_t index = 0; index < count; ++index)
        colours[index] = {bytes[index * 3 + 2], bytes[index * 3 + 1], bytes[index * 3], 255};
    return true;
}

bool CGifReader::Open(std::span<const uint8_t> file)
{
    CByteReader reader(file);
    std::span<const uint8_t> signature;
    uint16_t width = 0;
    uint16_t height = 0;
    uint8_t packed = 0;
    if (!reader.ReadBytes(6, signature) || !reader.ReadU16(width) || !reader.ReadU16(height) ||
        !reader.ReadU8(packed) || !reader.ReadU8(m_backgroundIndex) || !reader.Skip(1))
        return false;
    if (!std::ranges::equal(signature, std::string_view("GIF87a")) &&
        !std::ranges::equal(signature, std::string_view("GIF89a")))
        return false;
    m_globalColours.fill({0, 0, 0, 255});
    if ((packed & kHasColourTable) != 0 && !ReadColours(reader, packed, m_globalColours))
        return false;
    m_screen = {width, height};
    m_data = CByteReader(reader.Rest());
    return true;
}

bool CGifReader::NextFrame(GifFrame& frame)
{
    frame = {};
    uint8_t block = 0;
    while (m_data.ReadU8(block)) {
        if (block == kImageBlock)
            return ReadImage(frame);
        if (block == kExtensionBlock ? !ReadExtension(frame) : block != 0)
            return false;
    }
    return false;
}

bool CGifReader::ReadExtension(GifFrame& frame)
{
    uint8_t label = 0;
    if (!m_data.ReadU8(label))
        return false;
    switch (label) {
    case kGraphicControl:
        return m_data.Skip(1) && m_data.ReadU8(frame.graphicControlByte) && m_data.ReadU16(frame.delay) &&
               m_data.ReadU8(frame.transparentIndex) && m_data.Skip(1);
    case kPlainText:
    case kComment:
    case kApplication:
        return SkipSubBlocks();
    default:
        return false;
    }
}

bool CGifReader::SkipSubBlocks()
{
    uint8_t length = 0;
    while (m_data.ReadU8(length)) {
        if (length == 0)
            return true;
        if (!m_data.Skip(length))
            break;
    }
    [[maybe_unused]] const bool atEnd = m_data.Seek(m_data.Size());
    return false;
}

/// Collects the image's data up to its terminator, or as much as the file holds.
void CGifReader::JoinSubBlocks()
{
    m_codes.clear();
    uint8_t length = 0;
    while (m_data.ReadU8(length) && length != 0) {
        std::span<const uint8_t> bytes;
        if (!m_data.ReadBytes(std::min<uint64_t>(length, m_data.Remaining()), bytes))
            break;
        m_codes.insert(m_codes.end(), bytes.begin(), bytes.end());
    }
    m_codes.resize(m_codes.size() + kLzwInputSlack);
}

/// Whether the file is long enough for the pixels that its images claim. A truncated image is kept, so a
/// claim without data is no defect; memory without limit would be.
bool CGifReader::IsBelievable(uint64_t pixels)
{
    const uint64_t claimed = m_pixels + pixels;
    if (pixels == 0 || claimed > static_cast<uint64_t>(kMaxLoadedPixels) ||
        claimed > kFreePixels + m_data.Size() * kPixelsPerByte)
        return false;
    m_pixels = claimed;
    return true;
}

bool CGifReader::ReadImage(GifFrame& frame)
{
    uint16_t left = 0;
    uint16_t top = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (!m_data.ReadU16(left) || !m_data.ReadU16(top) || !m_data.ReadU16(width) || !m_data.ReadU16(height) ||
        !m_data.ReadU8(frame.imageDescriptorByte))
        return false;
    Colours colours = m_globalColours;
    if ((frame.imageDescriptorByte & kHasColourTable) != 0 &&
        !ReadColours(m_data, frame.imageDescriptorByte, colours))
        return false;
    if ((frame.graphicControlByte & kHasTransparentIndex) != 0)
        colours[frame.transparentIndex].reserved = 0;
    uint8_t minimumCodeSize = 0;
    if (!m_data.ReadU8(minimumCodeSize))
        return false;
    // A frame with a defect is read to its end, too, so that the next one is found.
    JoinSubBlocks();
    const size_t pixels = size_t{width} * height;
    if (minimumCodeSize < kMinLzwCodeSize || minimumCodeSize > kMaxLzwCodeSize || !IsBelievable(pixels))
        return false;

    if (m_indices.Size() < pixels + kLzwSlack)
        m_indices = CHeapBlock::Allocate(pixels + kLzwSlack);
    CPackedDib dib = CPackedDib::CreateTransparent(width, height);
    if (m_indices.IsEmpty() || dib.IsEmpty())
        return false;
    const std::optional<size_t> decoded = DecodeGifLzw(
        std::span(m_codes).first(m_codes.size() - kLzwInputSlack), minimumCodeSize, m_indices.Data(), pixels);
    if (!decoded)
        return false;
    PlaceIndices(m_indices.Data(), *decoded, colours, (frame.imageDescriptorByte & kIsInterlaced) != 0, dib);
    frame.dib = std::move(dib);
    frame.position = {left, top};
    return true;
}

bool LoadGifFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    CGifReader reader;
    if (!file || !reader.Open(file->Bytes()))
        return false;
    canvas.width = reader.ScreenSize().width;
    canvas.height = reader.ScreenSize().height;
    canvas.backgroundIndex = reader.BackgroundIndex();
    bool isFirst = true;
    GifFrame frame;
    while (reader.ConsumedBytes() < reader.DataBytes()) {
        if (!reader.NextFrame(frame))
            continue;
        AppendPicture(canvas, std::move(frame.dib), frame.position);
        if (std::exchange(isFirst, false)) {
            canvas.graphicControlByte = frame.graphicControlByte;
            canvas.imageDescriptorByte = frame.imageDescriptorByte;
            canvas.transparentIndex = frame.transparentIndex;
            canvas.frameDelay = frame.delay;
        }
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>(reader.ConsumedBytes() * 100 / reader.DataBytes()));
    }
    if (progress != nullptr)
        progress->SetPosition(100);
    return true;
}
