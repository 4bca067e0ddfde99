// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/StructureChecks.h"

namespace {

enum Block : uint8_t { Extension = 0x21, Image = 0x2C, Trailer = 0x3B };

uint64_t TableBytes(uint8_t packed)
{
    return (packed & 0x80) != 0 ? uint64_t{6} << (packed & 7) : 0;
}

bool SkipSubBlocks(CByteReader& file)
{
    uint8_t length = 0;
    do {
        if (!file.ReadU8(length) || !file.Skip(length))
            return false;
    } while (length > 0);
    return true;
}

bool SkipImage(CByteReader& file)
{
    uint8_t packed = 0;
    return file.Skip(8) && file.ReadU8(packed) && file.Skip(TableBytes(packed)) && file.Skip(1) &&
           SkipSubBlocks(file);
}

} // namespace

void CheckGif(CByteReader file, Faults& faults)
{
    std::span<const uint8_t> signature;
    uint8_t packed = 0;
    if (!file.ReadBytes(6, signature) || signature[0] != 'G' || signature[1] != 'I' || signature[2] != 'F') {
        faults.emplace_back("no GIF signature");
        return;
    }
    if (!file.Skip(4) || !file.ReadU8(packed) || !file.Skip(2) || !file.Skip(TableBytes(packed))) {
        faults.emplace_back("the header ends early");
        return;
    }
    for (int frames = 0;;) {
        const std::string place = " at byte " + std::to_string(file.Position());
        uint8_t block = 0;
        if (!file.ReadU8(block)) {
            faults.push_back("the file ends without a trailer, after frame " + std::to_string(frames));
            return;
        }
        if (block == Trailer)
            return;
        if (block != Extension && block != Image) {
            faults.push_back("no block begins" + place);
            return;
        }
        const bool isWhole = block == Image ? SkipImage(file) : file.Skip(1) && SkipSubBlocks(file);
        frames += block == Image ? 1 : 0;
        if (!isWhole) {
            faults.push_back(
                (block == Image ? "frame " + std::to_string(frames) : std::string("the extension")) + place +
                " ends behind the file");
            return;
        }
    }
}
