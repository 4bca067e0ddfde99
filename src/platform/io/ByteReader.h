// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

/// Reads numbers and runs of bytes one after another from bytes that somebody else owns, and never past
/// their end. A call that returns false has moved nothing and changed nothing.
class CByteReader {
public:
    CByteReader() = default;
    explicit CByteReader(std::span<const uint8_t> bytes) : m_bytes(bytes) {}

    [[nodiscard]] uint64_t Size() const { return m_bytes.size(); }
    [[nodiscard]] uint64_t Position() const { return m_position; }
    [[nodiscard]] uint64_t Remaining() const { return m_bytes.size() - m_position; }

    [[nodiscard]] bool ReadU8(uint8_t& value) { return ReadLittle(value); }
    [[nodiscard]] bool ReadI8(int8_t& value) { return ReadLittle(value); }
    /// Little-endian.
    [[nodiscard]] bool ReadU16(uint16_t& value) { return ReadLittle(value); }
    [[nodiscard]] bool ReadI16(int16_t& value) { return ReadLittle(value); }
    [[nodiscard]] bool ReadU32(uint32_t& value) { return ReadLittle(value); }
    [[nodiscard]] bool ReadI32(int32_t& value) { return ReadLittle(value); }
    [[nodiscard]] bool ReadU64(uint64_t& value) { return ReadLittle(value); }
    /// Big-endian.
    [[nodiscard]] bool ReadBigU16(uint16_t& value) { return ReadBig(value); }
    [[nodiscard]] bool ReadBigI16(int16_t& value) { return ReadBig(value); }
    [[nodiscard]] bool ReadBigU32(uint32_t& value) { return ReadBig(value); }
    [[nodiscard]] bool ReadBigI32(int32_t& value) { return ReadBig(value); }

    /// The next `count` bytes, not copied.
    [[nodiscard]] bool ReadBytes(uint64_t count, std::span<const uint8_t>& bytes)
    {
        if (count > Remaining())
            return false;
        bytes = m_bytes.subspan(m_position, static_cast<size_t>(count));
        m_position += static_cast<size_t>(count);
        return true;
    }
    [[nodiscard]] bool Skip(uint64_t count)
    {
        std::span<const uint8_t> skipped;
        return ReadBytes(count, skipped);
    }
    /// To `position` bytes from the start; the end itself is allowed.
    [[nodiscard]] bool Seek(uint64_t position)
    {
        if (position > m_bytes.size())
            return false;
        m_position = static_cast<size_t>(position);
        return true;
    }
    /// A reader of its own over `size` bytes from `offset`, counted from the start.
    [[nodiscard]] bool Slice(uint64_t offset, uint64_t size, CByteReader& part) const
    {
        if (offset > m_bytes.size() || size > m_bytes.size() - offset)
            return false;
        part = CByteReader(m_bytes.subspan(static_cast<size_t>(offset), static_cast<size_t>(size)));
        return true;
    }
    /// Everything not read yet.
    [[nodiscard]] std::span<const uint8_t> Rest() const { return m_bytes.subspan(m_position); }

private:
    enum class Order { Little, Big };

    template <typename Integer> bool ReadLittle(Integer& value) { return Read<Order::Little>(value); }
    template <typename Integer> bool ReadBig(Integer& value) { return Read<Order::Big>(value); }

    template <Order order, typename Integer> bool Read(Integer& value)
    {
        if (sizeof(Integer) > Remaining())
            return false;
        uint64_t collected = 0;
        for (size_t index = 0; index < sizeof(Integer); ++index) {
            const size_t shift = 8 * (order == Order::Little ? index : sizeof(Integer) - 1 - index);
            collected |= uint64_t{m_bytes[m_position + index]} << shift;
        }
        value = static_cast<Integer>(static_cast<std::make_unsigned_t<Integer>>(collected));
        m_position += sizeof(Integer);
        return true;
    }

    std::span<const uint8_t> m_bytes;
    size_t m_position = 0;
};
