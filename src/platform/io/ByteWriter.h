// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

/// Collects numbers, little-endian unless said otherwise, and runs of bytes.
class CByteWriter {
public:
    void U8(uint8_t value) { m_bytes.push_back(value); }
    void U16(uint16_t value) { Little(value); }
    void U32(uint32_t value) { Little(value); }
    void I32(int32_t value) { Little(static_cast<uint32_t>(value)); }
    void BigU16(uint16_t value) { Big(value); }
    void BigU32(uint32_t value) { Big(value); }
    void Bytes(std::span<const uint8_t> bytes) { m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end()); }
    /// Up to `width` characters, then zeroes up to `width`.
    void Text(std::span<const char> text, size_t width)
    {
        for (size_t index = 0; index < width; ++index)
            m_bytes.push_back(index < text.size() ? static_cast<uint8_t>(text[index]) : uint8_t{0});
    }
    void Zeroes(size_t count) { m_bytes.insert(m_bytes.end(), count, 0); }
    /// Overwrites four bytes that stand there already.
    void PatchU32(size_t position, uint32_t value)
    {
        for (size_t index = 0; index < sizeof value; ++index)
            m_bytes[position + index] = static_cast<uint8_t>(value >> (8 * index));
    }

    [[nodiscard]] size_t Size() const { return m_bytes.size(); }
    [[nodiscard]] const std::vector<uint8_t>& Collected() const { return m_bytes; }
    [[nodiscard]] std::vector<uint8_t> Take() { return std::move(m_bytes); }

private:
    template <typename Unsigned> void Little(Unsigned value)
    {
        for (size_t index = 0; index < sizeof value; ++index)
            m_bytes.push_back(static_cast<uint8_t>(value >> (8 * index)));
    }

    template <typename Unsigned> void Big(Unsigned value)
    {
        for (size_t index = sizeof value; index-- > 0;)
            m_bytes.push_back(static_cast<uint8_t>(value >> (8 * index)));
    }

    std::vector<uint8_t> m_bytes;
};
