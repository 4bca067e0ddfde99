// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/ui/UserInterface.h"

/// A palette picture of a 32-bit one; alpha is ignored. A picture that has no more than `colours` colours
/// keeps them exactly, in the order in which they appear; any other is reduced to the best `colours` that can
/// be found, dithered. bitCount: 1, 4 or 8 of the result. colours: 2 to 2^bitCount; the result's colour table
/// has as many entries as were needed. Empty when memory runs out.
[[nodiscard]] CPackedDib ReduceColorQuantity(const CPackedDib& dib, int bitCount, int colours,
                                             IProgress* progress);

/// The colour depths in which a picture can be saved.
enum class DibFormat {
    BlackAndWhite, ///< 1 bit, dithered by error diffusion
    Colors16,      ///< 4 bits, reduced and dithered
    Colors256,     ///< 8 bits, reduced and dithered
    HighColors,    ///< 16 bits, 5 a channel, rounded
    TrueColors,    ///< 24 bits
    Grays16,       ///< 4 bits, the nearest of 16 even grey levels
    Grays256,      ///< 8 bits, all grey levels
};

/// A 32-bit picture in one of these formats; alpha is dropped. Grey is blue * 0.11 + green * 0.59 + red *
/// 0.3. Empty when memory runs out.
[[nodiscard]] CPackedDib ConvertDIBFormat(const CPackedDib& dib, DibFormat format);
