// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/RowCoder.h"

#include "platform/memory/Prefetch.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fileio/RowCoder.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Bytes = hn::ScalableTag<uint8_t>;

constexpr size_t kLongestBlock = 128;
constexpr size_t kWindow = 64;
static_assert(kLongestBlock + 64 < kRowSlack);

void GatherFromWords(const uint8_t* HWY_RESTRICT pixels, size_t channel, size_t count,
                     uint8_t* HWY_RESTRICT samples)
{
    size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const Bytes bytes;
    const hn::RepartitionToWide<hn::RepartitionToWide<Bytes>> words;
    const hn::Rebind<uint8_t, decltype(words)> quarter;
    const size_t lanes = hn::Lanes(words);
    const int shift = static_cast<int>(channel * 8);
    for (; at + lanes <= count; at += lanes) {
        const auto pixel = hn::BitCast(words, hn::LoadU(bytes, pixels + at * 4));
        hn::StoreU(hn::TruncateTo(quarter, hn::ShiftRightSame(pixel, shift)), quarter, samples + at);
    }
#endif
    for (; at < count; ++at)
        samples[at] = pixels[at * 4 + channel];
}

/// Bit i says that samples i and i + 1 are equal, for 64 of them.
uint64_t EqualPairs(const uint8_t* samples)
{
    const Bytes bytes;
    uint64_t pairs = 0;
    for (size_t at = 0; at < kWindow; at += hn::Lanes(bytes)) {
        const auto isPair = hn::Eq(hn::LoadU(bytes, samples + at), hn::LoadU(bytes, samples + at + 1));
        uint8_t bits[8] = {};
        hn::StoreMaskBits(bytes, isPair, bits);
        uint64_t word = 0;
        std::memcpy(&word, bits, sizeof word);
        pairs |= word << at;
    }
    return pairs;
}

size_t RunLength(const uint8_t* samples, size_t limit)
{
    const Bytes bytes;
    const auto first = hn::Set(bytes, samples[0]);
    for (size_t at = 0; at < limit; at += hn::Lanes(bytes)) {
        const intptr_t other = hn::FindFirstTrue(bytes, hn::Ne(hn::LoadU(bytes, samples + at), first));
        if (other >= 0)
            return std::min(limit, at + static_cast<size_t>(other));
    }
    return limit;
}

void CopyBlock(const uint8_t* HWY_RESTRICT from, size_t length, uint8_t* HWY_RESTRICT to)
{
    const Bytes bytes;
    for (size_t at = 0; at < length; at += hn::Lanes(bytes))
        hn::StoreU(hn::LoadU(bytes, from + at), bytes, to + at);
}

size_t Compress(const uint8_t* HWY_RESTRICT samples, size_t count, uint8_t* HWY_RESTRICT packed)
{
    uint8_t* out = packed;
    size_t base = 0;
    uint64_t pairs = EqualPairs(samples);
    for (size_t at = 0; at < count;) {
        const uint8_t* block = samples + at;
        const size_t limit = std::min(count - at, kLongestBlock);
        if (limit > 1 && block[0] == block[1]) {
            PrefetchBehind(block, kLongestBlock);
            const size_t length = RunLength(block, limit);
            out[0] = static_cast<uint8_t>(257 - length);
            out[1] = block[0];
            out += 2;
            at += length;
            continue;
        }
        if (at - base >= kWindow) {
            base = at;
            pairs = EqualPairs(block);
        }
        uint64_t rest = pairs >> (at - base);
        size_t length = 0;
        while (rest == 0 && base + kWindow - at < limit) {
            base += kWindow;
            length = base - at;
            rest = pairs = EqualPairs(samples + base);
        }
        length = rest == 0 ? limit : std::min(limit, length + hwy::Num0BitsBelowLS1Bit_Nonzero64(rest) + 1);
        out[0] = static_cast<uint8_t>(length - 1);
        CopyBlock(block, length, out + 1);
        out += 1 + length;
        at += length;
    }
    return static_cast<size_t>(out - packed);
}

void FillBlock(uint8_t sample, size_t length, uint8_t* to)
{
    const Bytes bytes;
    const auto filled = hn::Set(bytes, sample);
    for (size_t at = 0; at < length; at += hn::Lanes(bytes))
        hn::StoreU(filled, bytes, to + at);
}

/// Returns where the next row begins; none when the data ends early.
const uint8_t* Decompress(const uint8_t* HWY_RESTRICT packed, const uint8_t* end, size_t count,
                          uint8_t* HWY_RESTRICT samples)
{
    for (size_t at = 0; at < count;) {
        if (packed == end)
            return nullptr;
        const size_t code = *packed++;
        const auto left = static_cast<size_t>(end - packed);
        if (code < 128) {
            const size_t length = code + 1;
            if (left >= kRowSlack)
                CopyBlock(packed, length, samples + at);
            else if (left >= length)
                std::memcpy(samples + at, packed, length);
            else
                return nullptr;
            packed += length;
            at += length;
        } else if (code > 128) {
            if (left == 0)
                return nullptr;
            FillBlock(*packed++, 257 - code, samples + at);
            at += 257 - code;
        }
    }
    return packed;
}

void Interleave(const uint8_t* const (&rows)[4], size_t count, uint8_t* HWY_RESTRICT pixels)
{
    const Bytes bytes;
    const size_t lanes = hn::Lanes(bytes);
    size_t at = 0;
    for (; at + lanes <= count; at += lanes) {
        hn::StoreInterleaved4(hn::LoadU(bytes, rows[0] + at), hn::LoadU(bytes, rows[1] + at),
                              hn::LoadU(bytes, rows[2] + at), hn::LoadU(bytes, rows[3] + at), bytes,
                              pixels + at * 4);
    }
    for (; at < count; ++at) {
        for (size_t channel = 0; channel < 4; ++channel)
            pixels[at * 4 + channel] = rows[channel][at];
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(GatherFromWords);
HWY_EXPORT(Compress);
HWY_EXPORT(Decompress);
HWY_EXPORT(Interleave);
} // namespace

void GatherChannel(const uint8_t* pixels, size_t pixelBytes, size_t channel, size_t count, uint8_t* samples)
{
    if (pixelBytes == 4) {
        HWY_DYNAMIC_DISPATCH(GatherFromWords)(pixels, channel, count, samples);
        return;
    }
    for (size_t at = 0; at < count; ++at)
        samples[at] = pixels[at * pixelBytes + channel];
}

size_t CompressRow(const uint8_t* samples, size_t count, uint8_t* packed)
{
    return HWY_DYNAMIC_DISPATCH(Compress)(samples, count, packed);
}

bool DecompressRow(std::span<const uint8_t>& packed, size_t count, uint8_t* samples)
{
    const uint8_t* const end = packed.data() + packed.size();
    const uint8_t* const next = HWY_DYNAMIC_DISPATCH(Decompress)(packed.data(), end, count, samples);
    if (next == nullptr && count != 0)
        return false;
    packed = packed.subspan(static_cast<size_t>(next - packed.data()));
    return true;
}

bool SkipRows(std::span<const uint8_t>& packed, size_t count, size_t rows)
{
    const uint8_t* next = packed.data();
    const uint8_t* const end = next + packed.size();
    for (size_t row = 0; row < rows && count != 0; ++row) {
        for (size_t at = 0; at < count;) {
            if (next == end)
                return false;
            const size_t code = *next++;
            if (code == 128)
                continue;
            const size_t stored = code < 128 ? code + 1 : 1;
            if (static_cast<size_t>(end - next) < stored)
                return false;
            next += stored;
            at += code < 128 ? stored : 257 - code;
        }
    }
    packed = packed.subspan(static_cast<size_t>(next - packed.data()));
    return true;
}

void InterleaveRows(const uint8_t* const (&rows)[4], size_t count, uint8_t* pixels)
{
    HWY_DYNAMIC_DISPATCH(Interleave)(rows, count, pixels);
}

#endif
