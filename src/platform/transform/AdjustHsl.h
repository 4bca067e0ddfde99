// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

class IProgress;

/// Turns the hue and changes saturation and lightness of the double cone of hue, saturation and lightness
/// (max + min is twice the lightness; the saturation is (max - min) / (255 - |max + min - 255|)); alpha
/// stays. A saturation of s percent draws each pixel's that far toward 0 (below 0) or toward full (above);
/// pixels without a hue stay gray. A lightness of l percent does the same toward black or white. All in
/// single precision, rounded half up. dib: 32 bits per pixel. hue: degrees, any; red turns to green at 120,
/// and 360 apart is the same. saturation, lightness: -100..100, others are clamped. All 0 gives the same
/// bytes. progress: may be none. flag: reserved, 0. Empty when memory runs out.
[[nodiscard]] CPackedDib AdjustDIBHSL(const CPackedDib& dib, int hue, int saturation, int lightness,
                                      IProgress* progress = nullptr, int flag = 0);
