// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"
#include "platform/dib/Pixel.h"
#include "platform/transform/PixelRgb.h"

#include <array>
#include <bit>
#include <cassert>
#include <cstring>
#include <vector>

namespace {

uint32_t OpaquePixel(RgbQuad colour)
{
    return kOpaquePixel | uint32_t{colour.red} << 16 | uint32_t{colour.green} << 8 | colour.blue;
}

/// Up to 8 bits per pixel: a whole byte holds one to eight indices, most significant bits first.
void ConvertIndexed(const CPackedDib& dib, CPackedDib& result)
{
    std::array<uint32_t, 256> colours{};
    colours.fill(kOpaquePixel);
    const std::span<const RgbQuad> palette = dib.ColourTable();
    for (size_t i = 0; i < std::min(palette.size(), colours.size()); ++i)
        colours[i] = OpaquePixel(palette[i]);
    const int bits = dib.BitCount();
    const unsigned mask = (1u << bits) - 1;
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* from = dib.Row(y);
        uint8_t* to = result.Row(y);
        for (int x = 0; x < dib.Width(); ++from) {
            for (int shift = 8 - bits; shift >= 0 && x < dib.Width(); shift -= bits, ++x, to += 4)
                StorePixel(to, colours[(unsigned{*from} >> shift) & mask]);
        }
    }
}

/// 24 or 32 bits per pixel.
void ConvertDirect(const CPackedDib& dib, CPackedDib& result)
{
    const int width = dib.Width();
    const ptrdiff_t step = dib.BitCount() / 8;
    for (int y = 0; y < dib.Height() && width > 0; ++y) {
        const uint8_t* from = dib.Row(y);
        uint8_t* to = result.Row(y);
        // Four bytes at a time, except at the end, where the fourth may be missing.
        for (int x = 0; x < width - 1; ++x, from += step, to += 4)
            StorePixel(to, LoadPixel(from) | kOpaquePixel);
        StorePixel(to, OpaquePixel({from[0], from[1], from[2], 0}));
    }
}

/// One channel of a pixel with bit fields, scaled to 0..255 by rounding.
class CBitField {
public:
    explicit CBitField(uint32_t mask)
        : m_mask(mask), m_shift(mask == 0 ? 0 : std::countr_zero(mask)), m_maximum(mask >> m_shift)
    {
        if (m_maximum < m_table.size()) {
            for (uint32_t value = 0; value <= m_maximum; ++value)
                m_table[value] = Scale(value);
        }
    }

    [[nodiscard]] uint32_t Read(uint32_t pixel) const
    {
        const uint32_t value = (pixel & m_mask) >> m_shift;
        return m_maximum < m_table.size() ? m_table[value] : Scale(value);
    }

private:
    [[nodiscard]] uint8_t Scale(uint32_t value) const
    {
        if (m_maximum == 0)
            return 0;
        return static_cast<uint8_t>((uint64_t{value} * 255 + m_maximum / 2) / m_maximum);
    }

    uint32_t m_mask;
    int m_shift;
    uint32_t m_maximum;
    std::array<uint8_t, 256> m_table{};
};

template <typename Pixel> void ConvertBitFields(const CPackedDib& dib, CPackedDib& result)
{
    constexpr std::array<uint32_t, 3> kFiveBitMasks{0x7C00, 0x03E0, 0x001F};
    const std::span<const uint32_t> masks = dib.Masks().empty() ? kFiveBitMasks : dib.Masks();
    const CBitField red(masks[0]);
    const CBitField green(masks[1]);
    const CBitField blue(masks[2]);
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* from = dib.Row(y);
        uint8_t* to = result.Row(y);
        for (int x = 0; x < dib.Width(); ++x, from += sizeof(Pixel), to += 4) {
            Pixel pixel;
            std::memcpy(&pixel, from, sizeof pixel);
            StorePixel(to, kOpaquePixel | red.Read(pixel) << 16 | green.Read(pixel) << 8 | blue.Read(pixel));
        }
    }
}

void ClearMaskedAlpha(CPackedDib& dib, const CPackedDib& mask)
{
    assert(mask.BitCount() == 1 && mask.Size() == dib.Size());
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* bits = mask.Row(y);
        uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x) {
            if (PaletteIndexAt(bits, x, 1) != 0)
                row[ptrdiff_t{x} * 4 + 3] = 0;
        }
    }
}

} // namespace

CPackedDib ConvertTo32Bits(const CPackedDib& dib, const CPackedDib& mask)
{
    CPackedDib result = CPackedDib::Create(dib.Width(), dib.Height(), 32);
    if (result.IsEmpty())
        return result;
    const bool hasMasks = !dib.Masks().empty();
    if (dib.BitCount() <= 8)
        ConvertIndexed(dib, result);
    else if (dib.BitCount() == 16)
        ConvertBitFields<uint16_t>(dib, result);
    else if (dib.BitCount() == 32 && hasMasks)
        ConvertBitFields<uint32_t>(dib, result);
    else
        ConvertDirect(dib, result);
    if (!mask.IsEmpty())
        ClearMaskedAlpha(result, mask);
    return result;
}
