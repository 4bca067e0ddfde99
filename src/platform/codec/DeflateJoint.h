// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// Bytes that OpenDeflateStream may add.
inline constexpr size_t kDeflateJointBytes = 6;

/// Makes a complete deflate stream (RFC 1951) one that another deflate stream may follow: takes the final
/// mark off its last block and appends an empty stored block, which ends on a byte. The stream is the first
/// `size` bytes of `buffer`, which has room for kDeflateJointBytes more. Returns the new size; nothing when
/// the bytes are no deflate stream or more follows the final block.
[[nodiscard]] std::optional<size_t> OpenDeflateStream(std::span<uint8_t> buffer, size_t size);
