// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/io/ByteWriter.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Entries of the stored colour table that hold `count` colours: the next power of two from 2 to 256.
/// A count above 256 gives 2, as files of this program always had it.
[[nodiscard]] int GifTableSize(uint32_t count);

/// The index that masked pixels are written with: `current` if it lies below the table size and no unmasked
/// pixel uses it, else the lowest such index; none when all are used.
/// picture: 1, 4 or 8 bits per pixel. mask: 1 bit per pixel, the same size.
[[nodiscard]] std::optional<uint8_t> FindTransparentIndex(const CPackedDib& picture, const CPackedDib& mask,
                                                          uint8_t current, int tableSize);

/// How one picture is written.
struct GifFrameOptions {
    Point position;
    bool isInterlaced = false;
    bool hasLocalPalette = false;
    int tableSize = 256; ///< a power of two, 2..256, of the colour table that the picture uses
    uint8_t disposal = 0;
    uint16_t delay = 0; ///< hundredths of a second
    bool isTransparent = false;
    uint8_t transparentIndex = 0;
};

/// Collects a GIF89a file.
class CGifWriter {
public:
    /// palette: none for pictures with palettes of their own. tableSize: a power of two, 2..256.
    void WriteHeader(Size screen, std::span<const RgbQuad> palette, int tableSize, int bitCount,
                     uint8_t backgroundIndex);
    /// picture: 1, 4 or 8 bits per pixel. mask: 1 bit per pixel, the same size, set where the picture is
    /// transparent; empty for none. Progress: rows done * 100 / height.
    void WriteFrame(const CPackedDib& picture, const CPackedDib& mask, const GifFrameOptions& options,
                    IProgress* progress);
    /// How often an animation is shown again once it has been shown; 0: without end.
    /// Stands behind the header. Source: the looping extension that all programs know.
    void WriteRepetitions(uint16_t count);
    void WriteTrailer();

    [[nodiscard]] const std::vector<uint8_t>& Bytes() const { return m_writer.Collected(); }

private:
    void WritePalette(std::span<const RgbQuad> palette, int tableSize);

    CByteWriter m_writer;
};
