// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/transform/AxisTaps.h"

#include <optional>

/// What Scale makes of a picture that becomes higher and so much wider that a vector of result pixels comes
/// from a vector of source pixels: to the last bit the same as pixel by pixel. Both taps have four weights a
/// sample. None where the picture or the processor does not allow it, an empty picture when memory runs out.
[[nodiscard]] std::optional<CPackedDib> EnlargePicture(const CPackedDib& dib, Size size,
                                                       const CAxisTaps& columns, const CAxisTaps& rows);
