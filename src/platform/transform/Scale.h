// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

class IProgress;

/// The picture in another size: each axis on its own averages areas where it becomes shorter and interpolates
/// with a cubic where it becomes longer (see CAxisTaps). Colours count as much as their alpha, so that
/// nothing of what clear pixels hold shows up. In single precision: first along the columns the sums of
/// colour * alpha * weight and of alpha * weight, then along the rows the sums of those times the weights, in
/// the order of the samples; colour sum * (1 / alpha sum) and alpha sum, clamped to 0..255 and rounded half
/// up. Where the alpha comes out as 0 the pixel is 0. The same size gives the same bytes. dib: 32 bits per
/// pixel. progress: may be none. flag: reserved, 0. Empty for a side below 1 and when memory runs out.
[[nodiscard]] CPackedDib Scale(const CPackedDib& dib, int width, int height, IProgress* progress = nullptr,
                               int flag = 0);
