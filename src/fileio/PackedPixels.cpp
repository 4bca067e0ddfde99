// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PackedPixels.h"

#include "fileio/RowCoder.h"

#include <array>
#include <cassert>
#include <cstring>

namespace {

/// The byte of a pixel that each channel belongs to.
constexpr std::array<size_t, 4> kChannelBytes = {2, 1, 0, 3};
constexpr size_t kChunkBytes = 256 * 1024;

using Channels = std::array<std::span<const uint8_t>, 4>;

void UnpackWords(Channels channels, CPackedDib& dib, std::span<uint8_t> scratch)
{
    const auto width = static_cast<size_t>(dib.Width());
    std::array<uint8_t*, 4> rows{};
    for (size_t channel = 0; channel < 4; ++channel)
        rows[kChannelBytes[channel]] = scratch.data() + channel * (width + kRowSlack);
    for (int y = 0; y < dib.Height(); ++y) {
        for (size_t channel = 0; channel < 4; ++channel) {
            [[maybe_unused]] const bool whole =
                DecompressRow(channels[channel], width, rows[kChannelBytes[channel]]);
            assert(whole);
        }
        InterleaveRows({rows[0], rows[1], rows[2], rows[3]}, width, dib.Row(y));
    }
}

void UnpackOther(const Channels& channels, CPackedDib& dib, std::span<uint8_t> scratch)
{
    const auto width = static_cast<size_t>(dib.Width());
    const size_t pixelBytes = static_cast<size_t>(dib.BitCount()) / 8;
    for (size_t channel = 0; channel < pixelBytes; ++channel) {
        std::span<const uint8_t> packed = channels[channel];
        for (int y = 0; y < dib.Height(); ++y) {
            [[maybe_unused]] const bool whole = DecompressRow(packed, width, scratch.data());
            assert(whole);
            const auto row = static_cast<size_t>(dib.Row(y) - dib.Bits().data());
            for (size_t x = 0; x < width; ++x) {
                const size_t at = row + x * pixelBytes + kChannelBytes[channel];
                if (at < dib.Bits().size())
                    dib.Bits()[at] = scratch[x];
            }
        }
    }
}

} // namespace

bool PackPixels(const CPackedDib& dib, const ByteSink& write)
{
    assert(dib.BitCount() == 8 || dib.BitCount() == 24 || dib.BitCount() == 32);
    const auto width = static_cast<size_t>(dib.Width());
    const size_t pixelBytes = static_cast<size_t>(dib.BitCount()) / 8;
    const size_t rowRoom = PackedRowRoom(width);
    CHeapBlock samples = CHeapBlock::Allocate(width + kRowSlack);
    CHeapBlock packed = CHeapBlock::Allocate(kChunkBytes + rowRoom);
    if (samples.IsEmpty() || packed.IsEmpty())
        return false;
    size_t filled = 0;
    for (size_t channel = 0; channel < pixelBytes; ++channel) {
        const size_t byte = pixelBytes == 1 ? 0 : kChannelBytes[channel];
        for (int y = 0; y < dib.Height(); ++y) {
            GatherChannel(dib.Row(y), pixelBytes, byte, width, samples.Data());
            filled += CompressRow(samples.Data(), width, packed.Data() + filled);
            if (filled < kChunkBytes)
                continue;
            if (!write(packed.Bytes().first(filled)))
                return false;
            filled = 0;
        }
    }
    return write(packed.Bytes().first(filled));
}

CPackedDib UnpackPixels(std::span<const uint8_t>& packed, uint32_t width, uint32_t height, uint32_t bitCount)
{
    const bool isKnownDepth = bitCount == 8 || bitCount == 16 || bitCount == 24 || bitCount == 32;
    if (!isKnownDepth || uint64_t{width} * height > static_cast<uint64_t>(kMaxPicturePixels) ||
        width > INT32_MAX || height > INT32_MAX)
        return {};
    // Rows without pixels take no bytes, so the file's size would not bound their number.
    if (width == 0)
        return CPackedDib::Create(0, static_cast<int>(height), static_cast<int>(bitCount));
    Channels channels;
    std::span<const uint8_t> rest = packed;
    for (size_t channel = 0; channel < bitCount / 8; ++channel) {
        channels[channel] = rest;
        if (!SkipRows(rest, width, height))
            return {};
    }
    CPackedDib dib =
        CPackedDib::Create(static_cast<int>(width), static_cast<int>(height), static_cast<int>(bitCount));
    if (dib.IsEmpty())
        return {};
    CHeapBlock scratch = CHeapBlock::Allocate(4 * (size_t{width} + kRowSlack));
    if (scratch.IsEmpty())
        return {};
    if (bitCount == 32)
        UnpackWords(channels, dib, scratch.Bytes());
    else
        UnpackOther(channels, dib, scratch.Bytes());
    packed = rest;
    return dib;
}
