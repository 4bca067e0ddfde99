// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

/// The checksum of PNG chunks (ISO 3309, polynomial 0xEDB88320 bit-reversed).
[[nodiscard]] uint32_t Crc32(std::span<const uint8_t> bytes);
