// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"
#include "platform/dib/Pixel.h"
#include "platform/parallel/RowBands.h"
#include "platform/transform/PixelRgb.h"

#include <array>
#include <bit>
#include <cassert>
#include <functional>
#include <utility>
#include <vector>

namespace {

uint32_t OpaquePixel(RgbQuad colour)
{
    return kOpaquePixel | uint32_t{colour.red} << 16 | uint32_t{colour.green} << 8 | colour.blue;
}

/// Converts a stored row of `width` pixels.
using RowConversion = std::function<void(const uint8_t* from, uint8_t* to, int width)>;

/// A byte holds 8 / `Bits` indices, the first one in its highest bits.
template <int Bits>
void ConvertIndexedRow(const uint8_t* from, uint8_t* to, int width, const uint32_t* colours)
{
    constexpr int kPerByte = 8 / Bits;
    constexpr unsigned kMask = (1u << Bits) - 1;
    const auto store = [&](int count) {
        for (int i = 0; i < count; ++i, to += 4)
            StorePixel(to, colours[(unsigned{*from} >> (8 - Bits - i * Bits)) & kMask]);
        ++from;
    };
    for (; width >= kPerByte; width -= kPerByte)
        store(kPerByte);
    if (width > 0)
        store(width);
}

RowConversion IndexedConversion(const CPackedDib& dib)
{
    std::array<uint32_t, 256> colours{};
    colours.fill(kOpaquePixel);
    const std::span<const RgbQuad> palette = dib.ColourTable();
    for (size_t i = 0; i < std::min(palette.size(), colours.size()); ++i)
        colours[i] = OpaquePixel(palette[i]);
    const auto convert = dib.BitCount() == 1   ? ConvertIndexedRow<1>
                         : dib.BitCount() == 4 ? ConvertIndexedRow<4>
                                               : ConvertIndexedRow<8>;
    return [=](const uint8_t* from, uint8_t* to, int width) { convert(from, to, width, colours.data()); };
}

/// 24 or 32 bits per pixel, four bytes at a time, except at the end, where the fourth may be missing.
template <int PixelBytes> void ConvertDirectRow(const uint8_t* from, uint8_t* to, int width)
{
    for (; width > 1; --width, from += PixelBytes, to += 4)
        StorePixel(to, LoadPixel(from) | kOpaquePixel);
    if (width == 1)
        StorePixel(to, OpaquePixel({from[0], from[1], from[2], 0}));
}

/// One channel of a pixel with bit fields, scaled to 0..255 by rounding.
class CBitField {
public:
    explicit CBitField(uint32_t mask)
        : m_mask(mask), m_shift(mask == 0 ? 0 : std::countr_zero(mask)), m_maximum(mask >> m_shift)
    {
    }

    [[nodiscard]] uint32_t Read(uint32_t pixel) const
    {
        const uint64_t value = (pixel & m_mask) >> m_shift;
        return m_maximum == 0 ? 0 : static_cast<uint32_t>((value * 255 + m_maximum / 2) / m_maximum);
    }

private:
    uint32_t m_mask;
    int m_shift;
    uint32_t m_maximum;
};

RowConversion BitFieldConversion(const CPackedDib& dib)
{
    constexpr std::array<uint32_t, 3> kFiveBitMasks{0x7C00, 0x03E0, 0x001F};
    const std::span<const uint32_t> masks = dib.Masks().empty() ? kFiveBitMasks : dib.Masks();
    const auto read = [red = CBitField(masks[0]), green = CBitField(masks[1]),
                       blue = CBitField(masks[2])](uint32_t pixel) {
        return kOpaquePixel | red.Read(pixel) << 16 | green.Read(pixel) << 8 | blue.Read(pixel);
    };
    if (dib.BitCount() == 32) {
        return [read](const uint8_t* from, uint8_t* to, int width) {
            for (; width > 0; --width, from += 4, to += 4)
                StorePixel(to, read(LoadPixel(from)));
        };
    }
    std::vector<uint32_t> colours(1u << 16);
    for (uint32_t value = 0; value < colours.size(); ++value)
        colours[value] = read(value);
    return [colours = std::move(colours)](const uint8_t* from, uint8_t* to, int width) {
        for (; width > 0; --width, from += 2, to += 4)
            StorePixel(to, colours[from[0] | unsigned{from[1]} << 8]);
    };
}

RowConversion ConversionOf(const CPackedDib& dib)
{
    if (dib.BitCount() <= 8)
        return IndexedConversion(dib);
    if (dib.BitCount() == 16 || !dib.Masks().empty())
        return BitFieldConversion(dib);
    return dib.BitCount() == 24 ? ConvertDirectRow<3> : ConvertDirectRow<4>;
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
    constexpr int kPixelsPerMicrosecond = 1000;
    const int width = dib.Width();
    const RowConversion convert = ConversionOf(dib);
    ForRowBands(dib.Height(), BandRows(width, kPixelsPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            convert(dib.Row(y), result.Row(y), width);
    });
    if (!mask.IsEmpty())
        ClearMaskedAlpha(result, mask);
    return result;
}
