// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

/// Unpacks a zlib stream (RFC 1950) that gives exactly as many bytes as `out` has; false otherwise.
[[nodiscard]] bool InflateZlib(std::span<const uint8_t> packed, std::span<uint8_t> out);
