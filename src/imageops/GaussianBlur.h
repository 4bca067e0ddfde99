// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Weighs the pixels around each one by a Gaussian bell, each of the four bytes on its own.
/// dib: 32 bits per pixel. size: 1..kMaxBlurSize, others are clamped. With k the smallest of `size` and the
/// picture's sides, less 1 when even, and h = (k - 1) / 2 but at least 1, there are 2h + 1 taps of the weight
/// exp(-d * d * c), c = 0.5 / (sigma * sigma), sigma = h * 0.3333333333333333, divided by their sum.
/// First along the rows, then along the columns, all in double precision; this order decides the last bit:
/// from d = -h up to h, taps outside the picture left out, sum += value * weight (product and sum rounded
/// each) and used += weight; then sum / used. After the second pass 0.000001 is added, so that uniform
/// pictures stay uniform, and the value truncated. Empty when memory runs out; needs the result and about a
/// quarter of a megabyte for each processor.
[[nodiscard]] CPackedDib GaussianBlur(const CPackedDib& dib, int size);
