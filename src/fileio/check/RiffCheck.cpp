// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/StructureChecks.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr size_t kTagBytes = 4;

bool ReadTag(CByteReader& file, std::string& tag)
{
    std::span<const uint8_t> bytes;
    if (!file.ReadBytes(kTagBytes, bytes))
        return false;
    tag.assign(bytes.begin(), bytes.end());
    return true;
}

} // namespace

void CheckRiff(CByteReader file, Faults& faults)
{
    std::string tag;
    uint32_t length = 0;
    if (!ReadTag(file, tag) || tag != "RIFF" || !file.ReadU32(length) || !file.Skip(kTagBytes)) {
        faults.emplace_back("no RIFF file");
        return;
    }
    if (uint64_t{length} + 2 * kTagBytes > file.Size())
        faults.push_back("the file should have " + std::to_string(uint64_t{length} + 2 * kTagBytes) +
                         " bytes and has " + std::to_string(file.Size()));
    while (file.Remaining() > 0) {
        const std::string place = " at byte " + std::to_string(file.Position());
        if (!ReadTag(file, tag) || !file.ReadU32(length)) {
            faults.push_back("the chunk" + place + " ends behind the file");
            return;
        }
        const bool isName = std::ranges::all_of(tag, [](char c) { return c >= ' ' && c <= '~'; });
        // Chunks begin at even places.
        if (!file.Skip(length) || (length % 2 != 0 && file.Remaining() > 0 && !file.Skip(1))) {
            faults.push_back("the chunk" + (isName ? " " + tag : "") + place + " ends behind the file");
            return;
        }
    }
}
