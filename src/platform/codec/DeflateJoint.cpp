// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/DeflateJoint.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr int kMaxCodeBits = 15;
constexpr size_t kLiterals = 288;
constexpr size_t kDistances = 32;
constexpr size_t kEndOfBlock = 256;

/// Bits from the low end of each byte on. Past the end come zeroes, and IsPastEnd tells.
class CBitReader {
public:
    explicit CBitReader(std::span<const uint8_t> bytes) : m_bytes(bytes) {}

    [[nodiscard]] uint64_t Position() const { return m_position; }
    [[nodiscard]] bool IsPastEnd() const { return m_position > m_bytes.size() * 8; }
    /// At least 48 bits of what comes next.
    [[nodiscard]] uint64_t Peek() const
    {
        const size_t at = m_position / 8;
        uint64_t bits = 0;
        if (at + sizeof bits <= m_bytes.size())
            std::memcpy(&bits, m_bytes.data() + at, sizeof bits);
        else if (at < m_bytes.size())
            std::memcpy(&bits, m_bytes.data() + at, m_bytes.size() - at);
        return bits >> (m_position % 8);
    }
    void Skip(uint64_t bits) { m_position += bits; }
    [[nodiscard]] uint32_t Read(uint32_t bits)
    {
        const auto value = static_cast<uint32_t>(Peek() & ((uint64_t{1} << bits) - 1));
        Skip(bits);
        return value;
    }
    void SkipToByte() { m_position = (m_position + 7) / 8 * 8; }

private:
    std::span<const uint8_t> m_bytes;
    uint64_t m_position = 0;
};

/// Looks up the symbol that the next 15 bits begin with.
class CSymbolTable {
public:
    struct Entry {
        uint16_t symbol = 0;
        uint8_t bits = 0; ///< 0: no such code
    };

    /// The canonical code with these lengths (RFC 1951, section 3.2.2); false when there are too many codes.
    [[nodiscard]] bool Build(std::span<const uint8_t> lengths)
    {
        std::array<uint32_t, kMaxCodeBits + 2> next = {};
        for (const uint8_t length : lengths)
            next[length + size_t{1}] += length == 0 ? 0u : 1u;
        uint32_t code = 0;
        for (size_t bits = 1; bits <= kMaxCodeBits; ++bits) {
            const uint32_t count = next[bits + 1];
            next[bits] = code;
            code += count;
            if (code > uint32_t{1} << bits)
                return false;
            code <<= 1;
        }
        m_entries.fill({});
        for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            const uint8_t length = lengths[symbol];
            if (length == 0)
                continue;
            const Entry entry = {static_cast<uint16_t>(symbol), length};
            for (size_t at = Reversed(next[length]++, length); at < m_entries.size();
                 at += size_t{1} << length)
                m_entries[at] = entry;
        }
        return true;
    }
    [[nodiscard]] Entry Find(uint64_t bits) const { return m_entries[bits & (m_entries.size() - 1)]; }

private:
    static size_t Reversed(uint32_t code, int length)
    {
        size_t reversed = 0;
        for (int bit = 0; bit < length; ++bit)
            reversed |= size_t{(code >> bit) & 1} << (length - 1 - bit);
        return reversed;
    }

    std::array<Entry, size_t{1} << kMaxCodeBits> m_entries = {};
};

struct BlockCodes {
    CSymbolTable literals;
    CSymbolTable distances;
};

bool BuildFixedCodes(BlockCodes& codes)
{
    std::array<uint8_t, kLiterals> literals = {};
    std::fill(literals.begin(), literals.begin() + 144, uint8_t{8});
    std::fill(literals.begin() + 144, literals.begin() + 256, uint8_t{9});
    std::fill(literals.begin() + 256, literals.begin() + 280, uint8_t{7});
    std::fill(literals.begin() + 280, literals.end(), uint8_t{8});
    std::array<uint8_t, kDistances> distances = {};
    distances.fill(5);
    return codes.literals.Build(literals) && codes.distances.Build(distances);
}

bool ReadDynamicCodes(CBitReader& reader, BlockCodes& codes)
{
    constexpr std::array<uint8_t, 19> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                11, 4,  12, 3, 13, 2, 14, 1, 15};
    const size_t literalCount = reader.Read(5) + size_t{257};
    const size_t distanceCount = reader.Read(5) + size_t{1};
    const size_t lengthCount = reader.Read(4) + size_t{4};
    std::array<uint8_t, kOrder.size()> lengthLengths = {};
    for (size_t index = 0; index < lengthCount; ++index)
        lengthLengths[kOrder[index]] = static_cast<uint8_t>(reader.Read(3));
    if (literalCount > kLiterals || !codes.literals.Build(lengthLengths))
        return false;

    std::array<uint8_t, kLiterals + kDistances> lengths = {};
    size_t at = 0;
    while (at < literalCount + distanceCount) {
        const CSymbolTable::Entry entry = codes.literals.Find(reader.Peek());
        reader.Skip(entry.bits);
        if (entry.bits == 0 || reader.IsPastEnd())
            return false;
        uint8_t value = 0;
        size_t repeat = 1;
        switch (entry.symbol) {
        case 16:
            if (at == 0)
                return false;
            value = lengths[at - 1];
            repeat = 3 + reader.Read(2);
            break;
        case 17:
            repeat = 3 + reader.Read(3);
            break;
        case 18:
            repeat = 11 + reader.Read(7);
            break;
        default:
            value = static_cast<uint8_t>(entry.symbol);
        }
        if (repeat > literalCount + distanceCount - at)
            return false;
        std::fill_n(lengths.begin() + static_cast<ptrdiff_t>(at), repeat, value);
        at += repeat;
    }
    const std::span<const uint8_t> all(lengths);
    return codes.literals.Build(all.first(literalCount)) &&
           codes.distances.Build(all.subspan(literalCount, distanceCount));
}

/// Passes over the symbols of a block up to and with its end.
bool SkipSymbols(CBitReader& reader, const BlockCodes& codes)
{
    while (!reader.IsPastEnd()) {
        // A length with its distance is the longest: 48 bits.
        const uint64_t bits = reader.Peek();
        CSymbolTable::Entry entry = codes.literals.Find(bits);
        if (entry.bits == 0)
            return false;
        if (entry.symbol < kEndOfBlock) {
            reader.Skip(entry.bits);
            continue;
        }
        uint32_t used = entry.bits;
        if (entry.symbol == kEndOfBlock) {
            reader.Skip(used);
            return !reader.IsPastEnd();
        }
        const uint32_t length = entry.symbol;
        if (length >= 265 && length < 285)
            used += (length - 261) / 4;
        entry = codes.distances.Find(bits >> used);
        if (entry.bits == 0)
            return false;
        used += entry.bits;
        if (entry.symbol >= 4)
            used += entry.symbol / 2u - 1u;
        reader.Skip(used);
    }
    return false;
}

} // namespace

std::optional<size_t> OpenDeflateStream(std::span<uint8_t> buffer, size_t size)
{
    CBitReader reader(buffer.first(size));
    BlockCodes codes;
    uint64_t finalMark = 0;
    for (bool last = false; !last;) {
        finalMark = reader.Position();
        last = reader.Read(1) != 0;
        const uint32_t kind = reader.Read(2);
        bool valid = false;
        if (kind == 0) {
            reader.SkipToByte();
            const uint32_t bytes = reader.Read(16);
            reader.Skip(16 + uint64_t{bytes} * 8);
            valid = true;
        } else if (kind == 1) {
            valid = BuildFixedCodes(codes) && SkipSymbols(reader, codes);
        } else if (kind == 2) {
            valid = ReadDynamicCodes(reader, codes) && SkipSymbols(reader, codes);
        }
        if (!valid || reader.IsPastEnd())
            return std::nullopt;
    }
    const uint64_t end = reader.Position();
    if ((end + 7) / 8 != size || buffer.size() - size < kDeflateJointBytes)
        return std::nullopt;
    buffer[finalMark / 8] = static_cast<uint8_t>(buffer[finalMark / 8] & ~(1u << (finalMark % 8)));

    // Three zero bits (a stored block, not the last), then from the next byte on its length 0 and the
    // inverse.
    size_t at = (end + 3 + 7) / 8;
    if (at > size)
        buffer[size] = 0;
    constexpr std::array<uint8_t, 4> kEmptyBlock = {0x00, 0x00, 0xff, 0xff};
    for (const uint8_t byte : kEmptyBlock)
        buffer[at++] = byte;
    return at;
}
