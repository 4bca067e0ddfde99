// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/StructureChecks.h"
#include "platform/dib/PackedDib.h"

#include <cstdlib>

namespace {

constexpr uint32_t kOldHeaderBytes = 12;

} // namespace

void CheckBmp(CByteReader file, Faults& faults)
{
    uint16_t magic = 0;
    uint32_t bitsOffset = 0;
    uint32_t headerBytes = 0;
    if (!file.ReadU16(magic) || magic != 0x4D42 || !file.Skip(8) || !file.ReadU32(bitsOffset) ||
        !file.ReadU32(headerBytes)) {
        faults.emplace_back("no bitmap header");
        return;
    }
    int32_t width = 0;
    int32_t height = 0;
    uint16_t bitCount = 0;
    uint32_t compression = 0;
    bool isWhole = false;
    if (headerBytes == kOldHeaderBytes) {
        uint16_t oldWidth = 0;
        uint16_t oldHeight = 0;
        isWhole = file.ReadU16(oldWidth) && file.ReadU16(oldHeight) && file.Skip(2) && file.ReadU16(bitCount);
        width = oldWidth;
        height = oldHeight;
    } else {
        isWhole = file.ReadI32(width) && file.ReadI32(height) && file.Skip(2) && file.ReadU16(bitCount) &&
                  file.ReadU32(compression);
    }
    if (!isWhole) {
        faults.emplace_back("the header ends early");
        return;
    }
    const int64_t rows = std::abs(int64_t{height});
    if (width <= 0 || rows == 0 || width * rows > kMaxPicturePixels || bitCount > 32) {
        faults.push_back("its size of " + std::to_string(width) + " x " + std::to_string(rows) + " with " +
                         std::to_string(bitCount) + " bits a pixel cannot be held");
        return;
    }
    if (compression != 0 && compression != 3)
        return;
    // The padding of the last row may be missing.
    const int64_t stride = (int64_t{width} * bitCount + 31) / 32 * 4;
    const int64_t needed = int64_t{bitsOffset} + stride * (rows - 1) + (int64_t{width} * bitCount + 7) / 8;
    if (needed > static_cast<int64_t>(file.Size()))
        faults.push_back("the file should have " + std::to_string(needed) + " bytes and has " +
                         std::to_string(file.Size()));
}
