// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>

/// Fills a 32-bit picture with one colour (0x00bbggrr) and alpha.
void FillDib(CPackedDib& dib, uint32_t colour, uint8_t alpha);
