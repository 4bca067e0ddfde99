// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TiffPackBits.h"

#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

/// A growing file in memory with a place where the next byte goes.
struct MemoryFile {
    std::vector<uint8_t> bytes;
    size_t at = 0;
};

MemoryFile& FileOf(thandle_t handle)
{
    return *static_cast<MemoryFile*>(handle);
}

tmsize_t ReadFile(thandle_t handle, void* to, tmsize_t count)
{
    MemoryFile& file = FileOf(handle);
    const size_t taken =
        std::min(static_cast<size_t>(count), file.bytes.size() - std::min(file.at, file.bytes.size()));
    std::memcpy(to, file.bytes.data() + file.at, taken);
    file.at += taken;
    return static_cast<tmsize_t>(taken);
}

tmsize_t WriteFile(thandle_t handle, void* from, tmsize_t count)
{
    MemoryFile& file = FileOf(handle);
    const auto size = static_cast<size_t>(count);
    file.bytes.resize(std::max(file.bytes.size(), file.at + size));
    std::memcpy(file.bytes.data() + file.at, from, size);
    file.at += size;
    return count;
}

toff_t SeekFile(thandle_t handle, toff_t offset, int whence)
{
    MemoryFile& file = FileOf(handle);
    file.at = offset + (whence == SEEK_CUR ? file.at : whence == SEEK_END ? file.bytes.size() : 0);
    return file.at;
}

using TiffPointer = std::unique_ptr<TIFF, void (*)(TIFF*)>;

TiffPointer Open(MemoryFile& file, const char* mode)
{
    return {TIFFClientOpen(
                "memory", mode, &file, ReadFile, WriteFile, SeekFile, [](thandle_t) { return 0; },
                [](thandle_t handle) { return toff_t{FileOf(handle).bytes.size()}; }, nullptr, nullptr),
            TIFFClose};
}

} // namespace

ChannelPlanes PlanesOf(const CPackedDib& dib)
{
    ChannelPlanes planes{dib.Width(), dib.Height(), {}};
    for (size_t at = 0; at < dib.Bits().size(); ++at)
        planes.channels[at % 4].push_back(dib.Bits()[at]);
    return planes;
}

std::vector<uint8_t> EncodeTiffPackBits(const ChannelPlanes& planes)
{
    MemoryFile file;
    file.bytes.reserve(static_cast<size_t>(planes.width) * static_cast<size_t>(planes.height) * 4);
    {
        const TiffPointer tiff = Open(file, "wm");
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, planes.width);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, planes.height);
        TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, planes.height);
        TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 4);
        TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_SEPARATE);
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
        for (uint16_t c = 0; c < 4; ++c) {
            for (int y = 0; y < planes.height; ++y) {
                const uint8_t* row = planes.channels[c].data() + ptrdiff_t{y} * planes.width;
                TIFFWriteScanline(tiff.get(), const_cast<uint8_t*>(row), static_cast<uint32_t>(y), c);
            }
        }
    }
    return std::move(file.bytes);
}

void DecodeTiffPackBits(const std::vector<uint8_t>& bytes, ChannelPlanes& planes)
{
    MemoryFile file{bytes};
    const TiffPointer tiff = Open(file, "rm");
    for (uint16_t c = 0; c < 4; ++c) {
        for (int y = 0; y < planes.height; ++y)
            TIFFReadScanline(tiff.get(), planes.channels[c].data() + ptrdiff_t{y} * planes.width,
                             static_cast<uint32_t>(y), c);
    }
}
