// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// The picture turned about its centre, counter-clockwise as displayed for a positive angle, in a picture
/// just large enough for it. Each pixel is the nearest one of the source, whole; where there is none, it has
/// the fill colour and alpha 0. A quarter turn is 1.5707963 and no closer to half of pi; both centres are
/// held in single precision, the rest in double; coordinates are truncated toward zero after a half is added,
/// so that a band of about one pixel beyond the left and bottom edges still shows the edge pixels. dib: 32
/// bits per pixel. angleDegrees: any. fillColour: red in the low byte, then green, then blue. Empty when
/// memory runs out or the turned picture would be too large.
[[nodiscard]] CPackedDib RotateDib(const CPackedDib& dib, double angleDegrees, uint32_t fillColour);
