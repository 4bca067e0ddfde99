// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// Code sizes that picture data may begin with; codes have at most 12 bits.
inline constexpr int kMinLzwCodeSize = 1;
inline constexpr int kMaxLzwCodeSize = 11;

/// Bytes behind the picture's indices that decoding may overwrite: the longest string and a vector.
inline constexpr size_t kLzwSlack = 4096 + 64;
/// Bytes behind the code stream that decoding may read.
inline constexpr size_t kLzwInputSlack = 16;

/// Decodes the variable-width LZW code of GIF pictures.
/// codes: the joined sub-blocks, which kLzwInputSlack readable bytes follow.
/// minimumCodeSize: kMinLzwCodeSize..kMaxLzwCodeSize.
/// indices: room for `wanted` colour indices and kLzwSlack; decoding stops when `wanted` are there.
/// Returns how many indices were decoded before the end code, the end of the data, or a code that is not
/// in the table yet; none when such a code follows a clear code.
/// Strings are copied out of what was decoded already: every table entry repeats the previous string and
/// the sample behind it, which stand next to each other in the output.
[[nodiscard]] std::optional<size_t> DecodeGifLzw(std::span<const uint8_t> codes, int minimumCodeSize,
                                                 uint8_t* indices, size_t wanted);
