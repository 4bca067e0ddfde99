// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>

struct TiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffCloser>;

/// A TIFF file in memory, and how far it has been read. Must outlive the handle opened on it.
struct TiffMemory {
    std::span<const uint8_t> bytes;
    uint64_t position = 0;
};

/// At the first page; null when the bytes are no TIFF file. The library prints nothing.
[[nodiscard]] TiffHandle OpenTiff(TiffMemory& memory);

/// Writes into a stream that is open for reading and writing, and that the caller closes. Null on failure.
[[nodiscard]] TiffHandle CreateTiff(std::FILE* stream);
