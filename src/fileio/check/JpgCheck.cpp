// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/StructureChecks.h"

#include <algorithm>
#include <array>

namespace {

enum Mark : uint8_t { FirstRestart = 0xD0, StartOfPicture = 0xD8, EndOfPicture = 0xD9, StartOfScan = 0xDA };
constexpr uint8_t kMarkPrefix = 0xFF;
constexpr uint16_t kLengthBytes = 2;

/// Marks of frame headers: C0 to CF without the tables C4 and CC and the reserved C8.
bool IsFrameHeader(uint8_t mark)
{
    return mark >= 0xC0 && mark <= 0xCF && mark != 0xC4 && mark != 0xC8 && mark != 0xCC;
}

/// The next mark; fill bytes before it are passed over. False when something else stands there.
bool ReadMark(CByteReader& file, uint8_t& mark)
{
    if (!file.ReadU8(mark) || mark != kMarkPrefix)
        return false;
    while (mark == kMarkPrefix) {
        if (!file.ReadU8(mark))
            return false;
    }
    return true;
}

} // namespace

void CheckJpg(CByteReader file, Faults& faults)
{
    uint8_t mark = 0;
    if (!ReadMark(file, mark) || mark != StartOfPicture) {
        faults.emplace_back("no JPEG picture begins here");
        return;
    }
    bool hasFrame = false;
    while (mark != StartOfScan) {
        const std::string place = " at byte " + std::to_string(file.Position());
        if (!ReadMark(file, mark)) {
            faults.push_back("no segment" + place);
            return;
        }
        uint16_t length = 0;
        if (!file.ReadBigU16(length) || length < kLengthBytes || !file.Skip(length - kLengthBytes)) {
            faults.push_back("the segment" + place + " ends behind the file");
            return;
        }
        hasFrame = hasFrame || IsFrameHeader(mark);
    }
    if (!hasFrame)
        faults.emplace_back("the first scan has no frame header before it");
    constexpr std::array<uint8_t, 2> kEnd = {kMarkPrefix, EndOfPicture};
    if (std::ranges::search(file.Rest(), kEnd).empty())
        faults.emplace_back("the file ends before the end of the picture");
}
