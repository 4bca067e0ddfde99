// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Collects the fields of a header, little-endian.
class CByteSink {
public:
    void PutU8(uint8_t value) { m_bytes.push_back(value); }
    void PutU16(uint16_t value)
    {
        PutU8(static_cast<uint8_t>(value));
        PutU8(static_cast<uint8_t>(value >> 8));
    }
    void PutU32(uint32_t value)
    {
        PutU16(static_cast<uint16_t>(value));
        PutU16(static_cast<uint16_t>(value >> 16));
    }
    void PutZeroes(size_t count) { m_bytes.resize(m_bytes.size() + count); }
    void Clear() { m_bytes.clear(); }
    [[nodiscard]] std::span<const uint8_t> Bytes() const { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};
