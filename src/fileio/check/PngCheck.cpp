// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/StructureChecks.h"
#include "platform/codec/Crc32.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr size_t kNameBytes = 4;

} // namespace

void CheckPng(CByteReader file, Faults& faults)
{
    std::span<const uint8_t> signature;
    if (!file.ReadBytes(kSignature.size(), signature) || !std::ranges::equal(signature, kSignature)) {
        faults.emplace_back("no PNG signature");
        return;
    }
    std::string name;
    while (name != "IEND") {
        const std::string place = " at byte " + std::to_string(file.Position());
        uint32_t length = 0;
        std::span<const uint8_t> named;
        uint32_t stated = 0;
        if (!file.ReadBigU32(length)) {
            faults.emplace_back("the file ends before the chunk IEND");
            return;
        }
        if (!file.ReadBytes(uint64_t{length} + kNameBytes, named) || !file.ReadBigU32(stated)) {
            faults.push_back("the chunk" + place + " ends behind the file");
            return;
        }
        name.assign(named.begin(), named.begin() + kNameBytes);
        if (!std::ranges::all_of(name,
                                 [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); })) {
            faults.push_back("the chunk" + place + " has no name");
            return;
        }
        if (Crc32(named) != stated)
            faults.push_back("the checksum of the chunk " + name + place + " is wrong");
    }
    if (file.Remaining() > 0)
        faults.push_back(std::to_string(file.Remaining()) + " bytes behind the end of the picture");
}
