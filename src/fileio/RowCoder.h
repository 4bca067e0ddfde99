// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The row code of the native file and the clipboard stream: PackBits over the samples of one colour channel
/// in one row. Code bytes: 0..127 is followed by that many samples plus one, 129..255 by one sample that
/// stands 257 - code times, 128 means nothing. Published as the Macintosh PackBits routine.

/// Bytes behind a row of samples or packed bytes that these functions may read, or overwrite with anything.
inline constexpr size_t kRowSlack = 256;

/// Room for a packed row, slack included.
[[nodiscard]] constexpr size_t PackedRowRoom(size_t count)
{
    return 2 * count + kRowSlack;
}

/// Fewest bytes that a row of `count` samples takes.
[[nodiscard]] constexpr uint64_t SmallestPackedRow(uint64_t count)
{
    return (count + 127) / 128 * 2;
}

/// Takes one channel out of a row of pixels.
/// channel: 0..pixelBytes - 1. samples: room for `count` bytes and the slack.
void GatherChannel(const uint8_t* pixels, size_t pixelBytes, size_t channel, size_t count, uint8_t* samples);

/// Packs `count` samples, which the slack follows. A run takes up to 128 equal samples. A literal block
/// takes up to 128 samples and ends with the first of two equal ones, so that the run behind it begins one
/// sample late; code 128 is never written. Returns the bytes written to `packed`.
[[nodiscard]] size_t CompressRow(const uint8_t* samples, size_t count, uint8_t* packed);

/// Unpacks `count` samples from the front of `packed` and moves it to what follows them. What a block holds
/// beyond the row is dropped. samples: room for `count` bytes and the slack. False when the data ends early.
[[nodiscard]] bool DecompressRow(std::span<const uint8_t>& packed, size_t count, uint8_t* samples);

/// Moves `packed` behind `rows` rows of `count` samples; false when the data ends early.
[[nodiscard]] bool SkipRows(std::span<const uint8_t>& packed, size_t count, size_t rows);

/// Joins four rows of samples to pixels of four bytes, the first row giving the first byte.
void InterleaveRows(const uint8_t* const (&rows)[4], size_t count, uint8_t* pixels);
