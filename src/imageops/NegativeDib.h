// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Inverts every bit of blue, green and red; alpha stays.
/// dib: 32 bits per pixel. Returns a new picture of the same size; empty when memory runs out.
[[nodiscard]] CPackedDib NegativeDib(const CPackedDib& dib);
