// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/dib/PackedDib.h"

#include "platform/Limits.h"

#include <cassert>
#include <cstring>

namespace {

constexpr size_t kMaskBytes = 12;

size_t ColourTableEntries(const DibHeader& header)
{
    if (header.bitCount > 8)
        return 0;
    return header.coloursUsed != 0 ? header.coloursUsed : size_t{1} << header.bitCount;
}

size_t BitsOffset(const DibHeader& header)
{
    const bool masked = header.compression == static_cast<uint32_t>(DibCompression::BitFields);
    return sizeof(DibHeader) + (masked ? kMaskBytes : 0) + ColourTableEntries(header) * sizeof(RgbQuad);
}

} // namespace

CPackedDib CPackedDib::Allocate(const DibHeader& header, BlockContent content)
{
    CPackedDib dib;
    const int64_t width = header.width;
    const int64_t height = header.height;
    if (width < 0 || height < 0 || width > kMaxPictureSide || height > kMaxPictureSide ||
        width * height > kMaxPicturePixels)
        return dib;
    const size_t offset = BitsOffset(header);
    const auto rowBytes = static_cast<size_t>(DibStride(width, header.bitCount) * height);
    dib.m_block = CHeapBlock::Allocate(offset + rowBytes, offset, content);
    if (dib.m_block.IsEmpty())
        return dib;
    dib.m_bitsOffset = offset;
    std::memcpy(dib.m_block.Data(), &header, sizeof header);
    return dib;
}

CPackedDib CPackedDib::Create(int width, int height, int bitCount, int coloursUsed)
{
    DibHeader header;
    header.width = width;
    header.height = height;
    header.bitCount = static_cast<uint16_t>(bitCount);
    if (bitCount <= 8 && coloursUsed > 0)
        header.coloursUsed = static_cast<uint32_t>(coloursUsed);
    return Allocate(header);
}

CPackedDib CPackedDib::CreateWithMasks(int width, int height, int bitCount, uint32_t redMask,
                                       uint32_t greenMask, uint32_t blueMask)
{
    assert(bitCount == 16 || bitCount == 32);
    DibHeader header;
    header.width = width;
    header.height = height;
    header.bitCount = static_cast<uint16_t>(bitCount);
    header.compression = static_cast<uint32_t>(DibCompression::BitFields);
    CPackedDib dib = Allocate(header);
    if (!dib.IsEmpty()) {
        const uint32_t masks[] = {redMask, greenMask, blueMask};
        std::memcpy(dib.m_block.Data() + sizeof header, masks, sizeof masks);
    }
    return dib;
}

CPackedDib CPackedDib::CreateForOverwrite(int width, int height)
{
    DibHeader header;
    header.width = width;
    header.height = height;
    header.bitCount = 32;
    return Allocate(header, BlockContent::Undefined);
}

CPackedDib CPackedDib::Duplicate() const
{
    if (IsEmpty())
        return {};
    CPackedDib copy = Allocate(Header(), BlockContent::Undefined);
    if (!copy.IsEmpty())
        std::memcpy(copy.m_block.Data(), m_block.Data(), m_block.Size());
    return copy;
}

CPackedDib CPackedDib::Share()
{
    CPackedDib other;
    other.m_block = m_block.Share();
    other.m_bitsOffset = m_bitsOffset;
    return other;
}

std::span<const uint32_t> CPackedDib::Masks() const
{
    if (Header().compression != static_cast<uint32_t>(DibCompression::BitFields))
        return {};
    return {reinterpret_cast<const uint32_t*>(m_block.Data() + sizeof(DibHeader)), 3};
}

std::span<RgbQuad> CPackedDib::ColourTable()
{
    const size_t entries = ColourTableEntries(Header());
    return {reinterpret_cast<RgbQuad*>(m_block.Data() + m_bitsOffset - entries * sizeof(RgbQuad)), entries};
}

std::span<const RgbQuad> CPackedDib::ColourTable() const
{
    const size_t entries = ColourTableEntries(Header());
    return {reinterpret_cast<const RgbQuad*>(m_block.Data() + m_bitsOffset - entries * sizeof(RgbQuad)),
            entries};
}

std::span<uint8_t> CPackedDib::Bits()
{
    return m_block.Bytes().subspan(m_bitsOffset);
}

std::span<const uint8_t> CPackedDib::Bits() const
{
    return m_block.Bytes().subspan(m_bitsOffset);
}

BitmapView ViewOf(CPackedDib& dib)
{
    assert(dib.BitCount() == 32);
    const auto stride = static_cast<ptrdiff_t>(dib.Stride());
    return {dib.Bits().data() + stride * (dib.Height() - 1), -stride, dib.Width(), dib.Height()};
}

ConstBitmapView ViewOf(const CPackedDib& dib)
{
    assert(dib.BitCount() == 32);
    const auto stride = static_cast<ptrdiff_t>(dib.Stride());
    return {dib.Bits().data() + stride * (dib.Height() - 1), -stride, dib.Width(), dib.Height()};
}
