// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/io/ByteReader.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// How the samples of a file make colours. The values stand in the file.
enum class PsdMode : uint16_t { Bitmap = 0, Grey = 1, Indexed = 2, Rgb = 3, Cmyk = 4, Duotone = 8 };

/// Colour channels of a mode, without alpha.
[[nodiscard]] int PsdColourChannels(PsdMode mode);

struct PsdHeader {
    int width = 0;
    int height = 0;
    int channels = 0;
    int depth = 0; ///< bits a sample: 1, 8 or 16
    PsdMode mode = PsdMode::Rgb;
    std::array<RgbQuad, 256> palette{}; ///< of an indexed file
};

/// Numbers of channels that are no colours.
inline constexpr int kPsdAlphaChannel = -1;
inline constexpr int kPsdMaskChannel = -2;

/// One channel of a layer: its number, and its compression followed by its samples.
struct PsdChannel {
    int number = 0;
    CByteReader data;
};

/// What a layer record is. The marks of a group enclose its layers.
enum class PsdLayerKind { Pixels, GroupBottom, GroupTop };

struct PsdMask {
    Rect rect;
    uint8_t outside = 0; ///< the value outside the rectangle
    bool isDisabled = false;
    bool isInverted = false;
};

struct PsdLayer {
    Rect rect;
    std::vector<PsdChannel> channels;
    uint8_t opacity = 255;
    bool isVisible = true;
    PsdLayerKind kind = PsdLayerKind::Pixels;
    bool isSimple = true; ///< blended normally with all below it, without effects, and no adjustment of it
    std::optional<PsdMask> mask;
    std::string name; ///< UTF-8
};

/// The parts of a PSD file, which stay where they are in the file's bytes.
struct PsdFile {
    PsdHeader header;
    std::vector<PsdLayer> layers; ///< bottom first
    bool hasMergedAlpha = false;  ///< the first channel behind the colours of the merged picture is its alpha
    CByteReader merged;           ///< compression and samples of the merged picture
};

/// Finds the parts of a file; none when its structure is damaged or its kind is not known: version 1, the
/// modes above, 8 or 16 bits a sample, or 1 in a bitmap.
/// Source: Adobe Photoshop File Formats Specification.
[[nodiscard]] std::optional<PsdFile> ParsePsdFile(std::span<const uint8_t> bytes);

/// Whether what is seen of the layers needs no more than pictures with an opacity, one over the other.
[[nodiscard]] bool HasSimpleLayers(const PsdFile& file);

/// Layers with pixels: no group marks, no empty ones.
[[nodiscard]] size_t CountPsdPictures(const PsdFile& file);
