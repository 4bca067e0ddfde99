// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// What happens to a row of destination pixels that a row of source pixels is drawn on. `transparency` is
/// subtracted from every source alpha; what is left, not below 0, is called e here. Rows must not overlap.
using RowBlend = void (*)(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency);

/// Keeps the destination at e = 0, takes the whole source pixel at e = 255, else mixes all four bytes:
/// 2 * (destination * (32768 - w) >> 16) + 2 * (source * w >> 16), w = e * 32768 / 255.
void BlendRowWeighted(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency);

/// Straight alpha on both sides in truncating arithmetic; see CompositeOver.
void BlendRowOver(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency);

/// Takes the source's colour and e as the alpha.
void CopyRowLessTransparency(uint8_t* destination, const uint8_t* source, size_t pixels,
                             uint8_t transparency);

/// Whether this processor has vector instructions that the rows are drawn with.
[[nodiscard]] bool HasVectorInstructions();
