// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Crc32.h"

#include <libdeflate.h>

uint32_t Crc32(std::span<const uint8_t> bytes)
{
    return libdeflate_crc32(0, bytes.data(), bytes.size());
}
