// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <tiffio.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// How the pixels of a TIFF page are stored, as far as this program unpacks them itself.
struct TiffLayout {
    enum class Colour { Grey, Palette, Rgb, Cmyk };
    enum class Alpha { None, Straight, Premultiplied };

    int width = 0;
    int height = 0;
    uint16_t bits = 0;    ///< of a sample, 1 to 16
    uint16_t samples = 0; ///< of a pixel, those ignored included
    bool isPlanar = false;
    bool isWhiteZero = false;
    Colour colour = Colour::Grey;
    Alpha alpha = Alpha::None;

    [[nodiscard]] size_t ColourSamples() const
    {
        return colour == Colour::Cmyk ? 4 : colour == Colour::Rgb ? 3 : 1;
    }
};

/// Turns samples as the library delivers them (1 to 8 and 9 to 15 bits packed from the highest bit on, 16
/// bits in the machine's byte order) into blue, green, red, alpha.
class CTiffSamples {
public:
    /// `tiff` is asked for the colour map.
    CTiffSamples(const TiffLayout& layout, TIFF* tiff);

    /// `count` pixels of one row. In a planar file the samples are those of `plane` alone, and each call
    /// fills in the plane's channel; otherwise they are all, and `plane` is 0.
    void Place(const uint8_t* stored, int count, size_t plane, uint8_t* pixels);

    /// After the last plane: turns inks into light and divides colours by alpha, where the layout asks for
    /// it.
    void Finish(uint8_t* pixels, int count) const;

private:
    void Unpack(const uint8_t* stored, size_t count);

    const TiffLayout m_layout;
    std::vector<uint8_t> m_scale; ///< sample value to 0..255
    std::vector<RgbQuad> m_palette;
    std::vector<uint16_t> m_unpacked;
};

/// Divides the colours of `count` pixels by their alpha, truncated, at most 255.
void DividePixelsByAlpha(uint8_t* pixels, int count);
