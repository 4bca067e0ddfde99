// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <algorithm>
#include <cstdint>
#include <optional>

/// What the 32-bit option value of CImage::SaveImageFile means for each format. BMP and PCX ignore it. A
/// value that means nothing is taken as the default, so every number is allowed.

/// The value is the quality, 1 to 100; less counts as 1, more as 100.
struct JpgOptions {
    int quality = 85;

    [[nodiscard]] uint32_t Value() const { return static_cast<uint32_t>(quality); }
    [[nodiscard]] static JpgOptions Of(uint32_t value)
    {
        return {std::clamp(static_cast<int32_t>(value), 1, 100)};
    }
};

/// Bits 0 to 7 red, 8 to 15 green, 16 to 23 blue of the background that the file names; bit 24 is set when
/// there is one.
struct PngOptions {
    std::optional<RgbQuad> background = std::nullopt;

    [[nodiscard]] uint32_t Value() const
    {
        if (!background)
            return 0;
        return kHasBackground | uint32_t{background->blue} << 16 | uint32_t{background->green} << 8 |
               background->red;
    }
    [[nodiscard]] static PngOptions Of(uint32_t value)
    {
        if ((value & kHasBackground) == 0)
            return {};
        return {RgbQuad{static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8),
                        static_cast<uint8_t>(value), 0}};
    }

private:
    static constexpr uint32_t kHasBackground = 1u << 24;
};

/// Values of the compression tag (TIFF 6.0, section 8, and its Deflate supplement).
enum class TiffCompression : uint32_t {
    None = 1,
    Group3 = 3,
    Group4 = 4,
    Lzw = 5,
    Jpeg = 7,
    AdobeDeflate = 8,
    Deflate = 32946
};

/// The value is that of the compression tag.
struct TiffOptions {
    TiffCompression compression = TiffCompression::None;

    [[nodiscard]] uint32_t Value() const { return static_cast<uint32_t>(compression); }
    [[nodiscard]] static TiffOptions Of(uint32_t value)
    {
        using enum TiffCompression;
        for (const TiffCompression known : {None, Group3, Group4, Lzw, Jpeg, AdobeDeflate, Deflate}) {
            if (value == static_cast<uint32_t>(known))
                return {known};
        }
        return {};
    }
};

/// Bit 0: run-length coded. Bit 1: rows stored bottom-up.
struct TgaOptions {
    bool isRunLength = true;
    bool isBottomUp = false;

    [[nodiscard]] uint32_t Value() const { return (isRunLength ? 1u : 0u) | (isBottomUp ? 2u : 0u); }
    [[nodiscard]] static TgaOptions Of(uint32_t value) { return {(value & 1) != 0, (value & 2) != 0}; }
};
