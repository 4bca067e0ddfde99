// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/GifLzwDecoder.h"
#include "model/ObjectCanvas.h"
#include "platform/io/ByteReader.h"
#include "platform/ui/UserInterface.h"

#include <array>
#include <filesystem>
#include <span>
#include <vector>

/// One image of a GIF file.
struct GifFrame {
    CPackedDib
        dib; ///< 32 bits per pixel; alpha 0 where nothing was decoded and where the image is transparent
    Point position;
    uint8_t graphicControlByte = 0;
    uint8_t imageDescriptorByte = 0;
    uint16_t delay = 0; ///< hundredths of a second
    uint8_t transparentIndex = 255;
};

/// Reads the images of a GIF87a or GIF89a file one after another.
class CGifReader {
public:
    /// The bytes of a file; they must outlive the reader. False without a complete header and global colour
    /// table.
    [[nodiscard]] bool Open(std::span<const uint8_t> file);

    [[nodiscard]] Size ScreenSize() const { return m_screen; }
    [[nodiscard]] uint8_t BackgroundIndex() const { return m_backgroundIndex; }
    /// Bytes behind the header that were read so far, and all of them.
    [[nodiscard]] uint64_t ConsumedBytes() const { return m_data.Position(); }
    [[nodiscard]] uint64_t DataBytes() const { return m_data.Size(); }

    /// Reads on to the next image. False at a trailer, at the end, and at a defect, which costs at least one
    /// byte; there may be more images behind it.
    [[nodiscard]] bool NextFrame(GifFrame& frame);

private:
    /// Blue, green, red and an alpha of 255.
    using Colours = std::array<RgbQuad, 256>;

    [[nodiscard]] static bool ReadColours(CByteReader& reader, uint8_t packed, Colours& colours);
    [[nodiscard]] bool ReadExtension(GifFrame& frame);
    [[nodiscard]] bool SkipSubBlocks();
    void JoinSubBlocks();
    [[nodiscard]] bool ReadImage(GifFrame& frame);
    [[nodiscard]] bool IsBelievable(uint64_t pixels);

    CByteReader m_data;
    Size m_screen;
    uint8_t m_backgroundIndex = 0;
    Colours m_globalColours{};
    uint64_t m_pixels = 0; ///< of all images so far
    std::vector<uint8_t> m_codes;
    CHeapBlock m_indices;
};

/// Appends one object per image; canvas size and background index come from the screen, the other fields from
/// the first image that could be read. False when the file cannot be opened as GIF.
[[nodiscard]] bool LoadGifFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress);
