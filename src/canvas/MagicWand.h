// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

/// Which pixels the magic wand takes.
enum class WandReach { Connected, Everywhere };

/// The pixels of a 32-bit picture that look like the one at `seed`: red, green and blue within `similarity`
/// (0 to 255) of its own, and on the same side of alpha 128. Connected: those that can be reached from it by
/// steps up, down, left and right over such pixels.
/// seed: drawn into the picture. Empty when memory runs out.
[[nodiscard]] CRegion WandRegion(const CPackedDib& dib, Point seed, int similarity, WandReach reach);
