// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifLzwDecoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

namespace {

constexpr uint32_t kTableSize = 4096;
constexpr uint32_t kWidestCode = 12;
constexpr size_t kCopyBytes = 16;

/// Codes of one to twelve bits, least significant bit first.
class CBitReader {
public:
    explicit CBitReader(std::span<const uint8_t> bytes) : m_next(bytes.data()), m_bits(bytes.size() * 8) {}

    [[nodiscard]] bool Read(uint32_t width, uint32_t& code)
    {
        if (m_bits < width)
            return false;
        m_bits -= width;
        // Whole bytes that fit behind the held bits, each time: no branch to guess. Bits that do not fit are
        // loaded again.
        uint64_t word = 0;
        std::memcpy(&word, m_next, sizeof word);
        if constexpr (std::endian::native == std::endian::big)
            word = __builtin_bswap64(word);
        m_word |= word << m_held;
        m_next += (63 - m_held) / 8;
        m_held |= 56;
        code = static_cast<uint32_t>(m_word) & ((1U << width) - 1);
        m_word >>= width;
        m_held -= width;
        return true;
    }

private:
    const uint8_t* m_next;
    uint64_t m_bits; ///< not read yet
    uint64_t m_word = 0;
    uint32_t m_held = 0; ///< valid bits of the word; those above are part of what is loaded again
};

/// A string of indices: where it stands, in what was decoded or, of a code below the clear code, in kSingles;
/// and how long it is. Small, so that the table stays in the nearest cache.
struct LzwString {
    uint32_t begin = 0;
    uint32_t length = 0;
};

/// The strings that every table begins with.
constexpr auto kSingles = [] {
    std::array<uint8_t, (size_t{1} << kMaxLzwCodeSize) + kCopyBytes> singles{};
    for (size_t index = 0; index < singles.size(); ++index)
        singles[index] = static_cast<uint8_t>(index);
    return singles;
}();

/// Copies in steps of kCopyBytes; what is written beyond the string is overwritten later.
void CopyString(const uint8_t* from, size_t length, uint8_t* to)
{
    size_t at = 0;
    do {
        uint8_t part[kCopyBytes];
        std::memcpy(part, from + at, kCopyBytes);
        std::memcpy(to + at, part, kCopyBytes);
        at += kCopyBytes;
    } while (at < length);
}

} // namespace

std::optional<size_t> DecodeGifLzw(std::span<const uint8_t> codes, int minimumCodeSize, uint8_t* indices,
                                   size_t wanted)
{
    assert(minimumCodeSize >= kMinLzwCodeSize && minimumCodeSize <= kMaxLzwCodeSize && wanted <= UINT32_MAX);
    const uint32_t clear = 1U << minimumCodeSize;
    const uint32_t end = clear + 1;
    const auto firstWidth = static_cast<uint32_t>(minimumCodeSize) + 1;

    std::array<LzwString, kTableSize> table;
    for (uint32_t code = 0; code < clear; ++code)
        table[code] = {code, 1};

    CBitReader reader(codes);
    uint32_t width = firstWidth;
    uint32_t next = clear + 2;
    LzwString previous; // of length 0 where a new table begins
    bool wasCleared = false;
    uint8_t* out = indices;
    uint8_t* const outEnd = indices + wanted;
    uint32_t code = 0;
    while (out < outEnd && reader.Read(width, code) && code != end) {
        // Behind a clear code stands a pixel, whatever code below the next free one that is.
        const bool isFirst = previous.length == 0;
        if (code == clear && !(isFirst && wasCleared)) {
            width = firstWidth;
            next = clear + 2;
            previous = {};
            wasCleared = true;
            continue;
        }
        if (isFirst) {
            if (code >= next && wasCleared)
                return std::nullopt;
            if (code >= next)
                break;
            previous = {static_cast<uint32_t>(out - indices), 1};
            *out++ = static_cast<uint8_t>(code);
            continue;
        }
        if (code > next)
            break;
        const bool isNewest = code == next;
        if (next < kTableSize) {
            table[next] = {previous.begin, previous.length + 1};
            if (++next == 1U << width && width < kWidestCode)
                ++width;
        } else if (isNewest) {
            break;
        }
        const LzwString string = table[code];
        CopyString((code < clear ? kSingles.data() : indices) + string.begin, string.length, out);
        // The newest entry ends with the sample that begins this very string.
        if (isNewest)
            out[string.length - 1] = out[0];
        previous = {static_cast<uint32_t>(out - indices), string.length};
        out += string.length;
    }
    return static_cast<size_t>(std::min(out, outEnd) - indices);
}
