// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/TiffSamples.h"

#include "platform/codec/Cmyk.h"

#include <algorithm>
#include <cstring>

namespace {

/// Where sample 0, 1, 2 of a colour goes in a pixel. Inks keep their order until they are all there.
constexpr size_t kRgbBytes[] = {2, 1, 0};
constexpr size_t kInkBytes[] = {0, 1, 2, 3};
constexpr size_t kAlphaByte = 3;

} // namespace

CTiffSamples::CTiffSamples(const TiffLayout& layout, TIFF* tiff) : m_layout(layout)
{
    const uint32_t values = 1u << layout.bits;
    m_scale.resize(values);
    for (uint32_t value = 0; value < values; ++value) {
        const uint32_t level = layout.isWhiteZero ? values - 1 - value : value;
        m_scale[value] = static_cast<uint8_t>((level * 255 + (values - 1) / 2) / (values - 1));
    }
    if (layout.colour != TiffLayout::Colour::Palette)
        return;
    m_palette.resize(values);
    uint16_t* red = nullptr;
    uint16_t* green = nullptr;
    uint16_t* blue = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue) == 0)
        return;
    // The map has 16-bit levels; some writers put 8-bit ones there.
    const auto isByte = [values](const uint16_t* levels) {
        return std::all_of(levels, levels + values, [](uint16_t level) { return level < 256; });
    };
    const int shift = isByte(red) && isByte(green) && isByte(blue) ? 0 : 8;
    for (size_t index = 0; index < values; ++index) {
        m_palette[index] = {static_cast<uint8_t>(blue[index] >> shift),
                            static_cast<uint8_t>(green[index] >> shift),
                            static_cast<uint8_t>(red[index] >> shift), 0};
    }
}

void CTiffSamples::Unpack(const uint8_t* stored, size_t count)
{
    m_unpacked.resize(std::max(m_unpacked.size(), count));
    const size_t bits = m_layout.bits;
    if (bits == 8) {
        std::copy_n(stored, count, m_unpacked.begin());
    } else if (bits == 16) {
        std::memcpy(m_unpacked.data(), stored, count * 2);
    } else {
        uint32_t window = 0;
        size_t held = 0;
        for (size_t index = 0; index < count; ++index) {
            for (; held < bits; held += 8)
                window = window << 8 | *stored++;
            held -= bits;
            m_unpacked[index] = static_cast<uint16_t>((window >> held) & ((1u << bits) - 1));
        }
    }
}

void CTiffSamples::Place(const uint8_t* stored, int count, size_t plane, uint8_t* pixels)
{
    const bool isPlanar = m_layout.isPlanar;
    const auto pixelCount = static_cast<size_t>(count);
    const size_t step = isPlanar ? 1 : m_layout.samples;
    Unpack(stored, pixelCount * step);

    const size_t colours = m_layout.ColourSamples();
    const bool hasAlpha = m_layout.alpha != TiffLayout::Alpha::None;
    for (size_t sample = 0; sample < m_layout.samples; ++sample) {
        if (isPlanar && sample != plane)
            continue;
        const uint16_t* from = m_unpacked.data() + (isPlanar ? 0 : sample);
        uint8_t* to = pixels;
        if (sample >= colours) {
            // Alpha is the first sample behind the colours.
            if (sample > colours || !hasAlpha)
                break;
            const bool flips = m_layout.isWhiteZero;
            for (size_t x = 0; x < pixelCount; ++x, from += step, to += 4)
                to[kAlphaByte] = static_cast<uint8_t>(flips ? 255 - m_scale[*from] : m_scale[*from]);
        } else if (m_layout.colour == TiffLayout::Colour::Palette) {
            for (size_t x = 0; x < pixelCount; ++x, from += step, to += 4)
                std::memcpy(to, &m_palette[*from], sizeof(RgbQuad));
        } else if (m_layout.colour == TiffLayout::Colour::Grey) {
            for (size_t x = 0; x < pixelCount; ++x, from += step, to += 4)
                std::fill_n(to, 3, m_scale[*from]);
        } else {
            to += m_layout.colour == TiffLayout::Colour::Rgb ? kRgbBytes[sample] : kInkBytes[sample];
            for (size_t x = 0; x < pixelCount; ++x, from += step, to += 4)
                *to = m_scale[*from];
        }
    }
    if (!hasAlpha && m_layout.colour != TiffLayout::Colour::Cmyk && plane == 0) {
        for (size_t x = 0; x < pixelCount; ++x)
            pixels[x * 4 + kAlphaByte] = 255;
    }
}

void CTiffSamples::Finish(uint8_t* pixels, int count) const
{
    if (m_layout.colour == TiffLayout::Colour::Cmyk)
        CmykRowToBgra(pixels, count, Ink::Plain);
    else if (m_layout.alpha == TiffLayout::Alpha::Premultiplied)
        DividePixelsByAlpha(pixels, count);
}

void DividePixelsByAlpha(uint8_t* pixels, int count)
{
    for (uint8_t* pixel = pixels; pixel != pixels + ptrdiff_t{count} * 4; pixel += 4) {
        const uint32_t alpha = pixel[kAlphaByte];
        for (int channel = 0; channel < 3 && alpha != 0 && alpha != 255; ++channel)
            pixel[channel] = static_cast<uint8_t>(std::min(pixel[channel] * 255u / alpha, 255u));
    }
}
