// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Encodes colour indices with the variable-width LZW code of GIF pictures. A full table is cleared at once.
/// The code stream is cut into sub-blocks of at most 254 bytes, one below what the format allows.
///
/// The table finds the code of a string by the code of what comes before its last index and that index: open
/// addressing, at most a quarter full, with a first slot and a step of its own for every index, so that the
/// way from one code to the next is one exclusive-or and one load.
class CGifLzwEncoder {
public:
    /// minimumCodeSize: 2..8; every index must be below 2^minimumCodeSize.
    /// Finished sub-blocks are appended to `output`.
    CGifLzwEncoder(int minimumCodeSize, std::vector<uint8_t>& output);

    /// Takes the next indices of the picture.
    void Encode(std::span<const uint8_t> indices);
    /// Writes what is left; the block terminator is not part of it.
    void Finish();

private:
    static constexpr uint32_t kCodes = 4096;
    static constexpr uint32_t kNoPrefix = kCodes;

    /// Codes of a growing width, least significant bit first.
    struct CodePacker {
        uint8_t* out = nullptr;
        uint64_t word = 0;
        uint32_t held = 0;
        uint32_t width = 0;

        void Put(uint32_t code);
        /// The code that follows an emitted one may need a bit more.
        void Widen(uint32_t next);
    };

    /// The longest string in the table that repeats one index. Flat areas are made of such strings, and a
    /// comparison of pixels is faster than looking up one after another.
    struct Run {
        uint16_t code = 0;
        uint16_t length = 1;
    };

    void StartRuns();
    void EncodePortion(std::span<const uint8_t> indices);
    void AppendSubBlocks(bool isLast);

    std::vector<uint8_t>& m_output;
    uint32_t m_codeSize;
    uint32_t m_clear;
    uint32_t m_next;
    uint32_t m_prefix = kNoPrefix;
    CodePacker m_packer;
    std::vector<uint8_t> m_packed;
    /// Prefix code, index and the string's own code, 12, 8 and 12 bits; 0 in free slots.
    std::vector<uint32_t> m_table;
    std::array<Run, 256> m_runs;
};
