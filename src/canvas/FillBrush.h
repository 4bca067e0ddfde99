// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

/// A paint colour, 0x00RRGGBB, with the alpha that it is laid on with.
struct Paint {
    uint32_t colour = 0;
    uint8_t alpha = 255;

    /// The colour as an opaque or partly transparent pixel, 0xAARRGGBB.
    [[nodiscard]] constexpr uint32_t Pixel() const { return colour | uint32_t{alpha} << 24; }
};

/// From a COLORREF setting, 0x00BBGGRR, to 0x00RRGGBB.
[[nodiscard]] constexpr uint32_t ColourOf(int32_t colorref)
{
    const auto value = static_cast<uint32_t>(colorref);
    return (value & 255) << 16 | (value & 0xFF00) | (value >> 16 & 255);
}

/// Puts a pixel over another with straight alpha on both sides, in truncating integer arithmetic:
/// a' = 255 - (255 - a)(255 - A) / 255 and c' = ((255 - A) a c / 255 + A F) / a', clamped.
[[nodiscard]] constexpr uint32_t Over(uint32_t below, uint32_t above)
{
    const uint32_t alpha = below >> 24;
    const uint32_t added = above >> 24;
    const uint32_t result = 255 - (255 - alpha) * (255 - added) / 255;
    const uint32_t kept = (255 - added) * alpha;
    uint32_t pixel = result << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        uint32_t channel = kept * (below >> shift & 255) / 255 + added * (above >> shift & 255);
        if (result != 0)
            channel /= result;
        pixel |= (channel < 255 ? channel : 255) << shift;
    }
    return pixel;
}

/// Paints runs of pixels with one colour.
class CFillBrush {
public:
    enum class Mode {
        Over,   ///< composited over what is there
        Replace ///< whole pixels, alpha included
    };

    CFillBrush(const Paint& paint, Mode mode);
    /// pixels: 32 bits each.
    void PaintRun(uint8_t* pixels, int count) const;

private:
    uint32_t m_pixel;
    bool m_replaces;
    std::array<std::array<uint8_t, 256>, 3> m_overOpaque{}; ///< blue, green, red over alpha 255
};
