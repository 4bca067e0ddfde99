// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

class IProgress;

/// Spreads or draws together red, green and blue about the middle and then shifts them; alpha stays:
/// (v - 127.5) * gain + (127.5 + brightness) in single precision, clamped to 0..255 and rounded half up. The
/// gain is (127 + contrast) / 127 up to 0, 127 / (127 - contrast) above, and 255 at 127: -127 makes
/// everything middle gray, 127 leaves black and white only; a brightness of 255 is white, of -255 black. dib:
/// 32 bits per pixel. brightness: -255..255, contrast: -127..127, others are clamped. Both 0 gives the same
/// bytes. progress: may be none. flag: reserved, 0. Empty when memory runs out.
[[nodiscard]] CPackedDib AdjustDIBBrightAndConstract(const CPackedDib& dib, int brightness, int contrast,
                                                     IProgress* progress = nullptr, int flag = 0);
