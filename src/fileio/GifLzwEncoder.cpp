// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifLzwEncoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

namespace {

constexpr uint32_t kWidestCode = 12;
constexpr size_t kSubBlockBytes = 254;
/// Indices that are encoded before sub-blocks are cut, and room for what they may become.
constexpr size_t kPortion = size_t{1} << 15;
constexpr size_t kPackedRoom = kPortion * 2 + kSubBlockBytes + 64;

constexpr uint32_t kSlots = 1U << 14;

/// Shorter runs are found as quickly by looking them up.
constexpr size_t kWorthwhileRun = 8;

/// Numbers without a pattern, one for every index, from a linear congruential generator.
constexpr std::array<uint32_t, 256> kSpread = [] {
    std::array<uint32_t, 256> spread{};
    uint32_t state = 1;
    for (uint32_t& each : spread) {
        state = state * 1664525 + 1013904223;
        each = state >> 15 & (kSlots - 1);
    }
    return spread;
}();

} // namespace

inline void CGifLzwEncoder::CodePacker::Put(uint32_t code)
{
    word |= uint64_t{code} << held;
    held += width;
    if (held <= 48)
        return;
    if constexpr (std::endian::native == std::endian::big) {
        const uint64_t swapped = __builtin_bswap64(word);
        std::memcpy(out, &swapped, sizeof swapped);
    } else {
        std::memcpy(out, &word, sizeof word);
    }
    const uint32_t whole = held / 8;
    out += whole;
    word >>= whole * 8;
    held %= 8;
}

inline void CGifLzwEncoder::CodePacker::Widen(uint32_t next)
{
    if (next >> width != 0 && width < kWidestCode)
        ++width;
}

CGifLzwEncoder::CGifLzwEncoder(int minimumCodeSize, std::vector<uint8_t>& output)
    : m_output(output), m_codeSize(static_cast<uint32_t>(minimumCodeSize)), m_clear(1U << m_codeSize),
      m_next(m_clear + 2), m_packed(kPackedRoom), m_table(kSlots)
{
    assert(minimumCodeSize >= 2 && minimumCodeSize <= 8);
    StartRuns();
    m_packer.out = m_packed.data();
    m_packer.width = m_codeSize + 1;
    m_packer.Put(m_clear);
}

void CGifLzwEncoder::StartRuns()
{
    for (size_t index = 0; index < m_runs.size(); ++index)
        m_runs[index] = {static_cast<uint16_t>(index), 1};
}

void CGifLzwEncoder::EncodePortion(std::span<const uint8_t> indices)
{
    CodePacker packer = m_packer;
    uint32_t* const table = m_table.data();
    uint32_t prefix = m_prefix;
    uint32_t next = m_next;
    for (size_t at = 0; at < indices.size(); ++at) {
        const uint32_t index = indices[at];
        const uint32_t key = prefix << 8 | index;
        uint32_t slot = prefix ^ kSpread[index];
        while (table[slot] != 0 && table[slot] >> 12 != key)
            slot = (slot + (kSpread[index] | 1)) & (kSlots - 1);
        if (table[slot] != 0) {
            prefix = table[slot] & (kCodes - 1);
            continue;
        }
        packer.Put(prefix);
        packer.Widen(next);
        Run& run = m_runs[index];
        if (next < kCodes) {
            if (prefix == run.code)
                run = {static_cast<uint16_t>(next), static_cast<uint16_t>(run.length + 1)};
            table[slot] = key << 12 | next++;
        } else {
            std::ranges::fill(m_table, 0U);
            StartRuns();
            packer.Put(m_clear);
            packer.width = m_codeSize + 1;
            next = m_clear + 2;
        }
        prefix = index;
        const size_t more = size_t{run.length} - 1;
        if (more >= kWorthwhileRun && more < indices.size() - at &&
            std::memcmp(&indices[at], &indices[at + 1], more) == 0) {
            prefix = run.code;
            at += more;
        }
    }
    m_prefix = prefix;
    m_next = next;
    m_packer = packer;
}

void CGifLzwEncoder::Encode(std::span<const uint8_t> indices)
{
    if (m_prefix == kNoPrefix && !indices.empty()) {
        m_prefix = indices[0];
        indices = indices.subspan(1);
    }
    while (!indices.empty()) {
        const size_t count = std::min(indices.size(), kPortion);
        EncodePortion(indices.first(count));
        AppendSubBlocks(false);
        indices = indices.subspan(count);
    }
}

void CGifLzwEncoder::AppendSubBlocks(bool isLast)
{
    const uint8_t* at = m_packed.data();
    auto left = static_cast<size_t>(m_packer.out - at);
    while (left >= kSubBlockBytes || (isLast && left > 0)) {
        const size_t length = std::min(left, kSubBlockBytes);
        m_output.push_back(static_cast<uint8_t>(length));
        m_output.insert(m_output.end(), at, at + length);
        at += length;
        left -= length;
    }
    std::memmove(m_packed.data(), at, left);
    m_packer.out = m_packed.data() + left;
}

void CGifLzwEncoder::Finish()
{
    if (m_prefix != kNoPrefix) {
        m_packer.Put(m_prefix);
        m_packer.Widen(m_next);
    }
    m_packer.Put(m_clear + 1);
    for (; m_packer.held > 0; m_packer.held -= std::min(m_packer.held, 8U), m_packer.word >>= 8)
        *m_packer.out++ = static_cast<uint8_t>(m_packer.word);
    AppendSubBlocks(true);
}
